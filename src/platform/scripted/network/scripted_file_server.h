#pragma once
#include <cstdint>
#include <string>
#include <vector>

#include "platform/network/http_downloads.h"
#include "platform/system/main_loop.h"

namespace nimbletype {

// What answers the requests. It is asked with the exact address and headers, and answers ranges, If-Range
// included, as a server does.
struct ScriptedFileServer {
  std::string content = {};       // of the one file that every address leads to
  std::string etag = "\"v1\"";    // with its quotes; not sent when empty
  std::string lastModified = {};  // not sent when empty
  bool honoursRanges = true;
  bool announcesLength = true;
  int status = 0;  // when set, the answer instead of the file, with a short page as its body
  std::vector<HttpHeader> headers = {};  // sent besides; in place of the server's own of the same name
  std::string redirectsTo = {};          // an address; refused unless it is https
  bool reachable = true;

  std::int64_t bytesPerTick = 1024;
  Milliseconds tick{1};
  std::int64_t dropsAfter = -1;        // bytes of one body, then the connection ends; never when negative
  std::int64_t fallsSilentAfter = -1;  // likewise; dropped once it was silent for `longestSilence`
};

// What the server answers to a request with these headers.
struct ScriptedAnswer {
  DownloadHead head;
  std::string body;
};
ScriptedAnswer scriptedAnswer(const ScriptedFileServer& server, const std::vector<HttpHeader>& headers);

}  // namespace nimbletype
