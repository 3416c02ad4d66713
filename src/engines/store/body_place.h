#pragma once
#include <cstdint>
#include <string>
#include <vector>

#include "engines/store/resume_note.h"
#include "platform/network/http_downloads.h"

namespace nimbletype {

// Where the body of a reply belongs.
enum class BodyPlace {
  append,     // behind the bytes held
  fromZero,   // in place of them
  startOver,  // nowhere: the bytes held are of no use, and the whole file must be asked for
  wrongFile,  // nowhere: another size than the expected file's was announced
  refused,    // nowhere: the server answered with something other than the file
  unusable,   // nowhere: a part that nobody asked for
};

// Decides from the beginning of a reply. `held` bytes of the expected `size` were there when the rest was
// asked for; 0 when all was. `validator` names the version they are of, empty when unknown.
BodyPlace placeBody(const DownloadHead& head, std::int64_t held, std::int64_t size,
                    const std::string& validator);

// The headers that ask for what is missing behind `held` bytes.
std::vector<HttpHeader> headersToResume(std::int64_t held, const std::string& validator);

// What names the version of the file in a reply; empty when nothing does so reliably.
std::string validatorOf(const DownloadHead& head);

}  // namespace nimbletype
