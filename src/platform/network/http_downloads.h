#pragma once
#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/network/http_client.h"
#include "platform/system/task.h"

namespace nimbletype {

struct DownloadRequest {
  std::string url;  // redirects are followed as long as they lead to https
  std::vector<HttpHeader> headers;
  std::filesystem::path file;  // made when it is missing
  std::int64_t most = 0;       // the transfer stops when the file would grow beyond this many bytes
};

// The beginning of a reply, before its body.
struct DownloadHead {
  int status = 0;
  std::vector<HttpHeader> headers;
};

struct DownloadEnd {
  enum class Case {
    complete,         // all that the server announced is in the file
    turnedAway,       // `place` had no place for the body
    tooLong,          // there was more than `most`
    notConnected,     // nothing arrived: no network, no such host, refused, not trusted
    dropped,          // the connection ended early or fell silent; the file holds what came
    redirectRefused,  // it led to something other than https
    notWritten,       // the file could not be opened or written
  };
  Case result = Case::dropped;
  std::string detail;  // the system's own words
};

// Transfers into files that are too long to be held in memory, on a thread of their own.
class HttpDownloads {
 public:
  struct Handlers {
    // Called on the other thread with the final reply's head, so it must own what it uses. Answers to which
    // length the file, which it may also remove, is cut before the body is appended; none ends the transfer.
    std::function<std::optional<std::int64_t>(const DownloadHead&)> place;
    // Main thread, a few times a second: how long the file is now.
    std::function<void(std::int64_t fileSize)> progress;
    // Main thread, once, when the file is closed. `head` is empty when no reply came.
    std::function<void(DownloadEnd, std::optional<DownloadHead> head)> done;
  };

  virtual ~HttpDownloads() = default;
  // Destroying the task ends the transfer; by its return the file is closed, with all that came.
  [[nodiscard]] virtual Task start(const DownloadRequest& request, Handlers handlers) = 0;
};

}  // namespace nimbletype
