#include "engines/store/download_failure.h"

namespace nimbletype {

std::string DownloadFailure::message() const {
  switch (reason) {
    case Case::tooLittleSpace:
      return "This Mac needs " + detail + " free for the download. Free up some space, then try again.";
    case Case::serverAnswered:
      return "The download server answered " + detail + ". Try again later.";
    case Case::notSaved:
      return "The download couldn't be saved: " + detail;
    case Case::mismatch:
      return "The download didn't match the expected file, so it was deleted. Try again.";
    case Case::notInstalled:
      return "The model couldn't be saved: " + detail;
    case Case::paused:
      return "The download paused because the connection dropped. Try again to pick up where it stopped.";
    case Case::stopped:
      break;
  }
  return "The download stopped. Check your connection, then try again.";
}

}  // namespace nimbletype
