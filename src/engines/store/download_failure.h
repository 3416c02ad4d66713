#pragma once
#include <string>

namespace nimbletype {

// Why the model could not be fetched or installed.
struct DownloadFailure {
  enum class Case {
    tooLittleSpace,  // detail: how much is needed, as the user reads it
    serverAnswered,  // detail: the HTTP status
    notSaved,        // detail: the system's description
    mismatch,        // what came was deleted
    notInstalled,    // detail: the system's description
    paused,          // what came is kept
    stopped,         // nothing has come
  };
  Case reason = Case::stopped;
  std::string detail;

  std::string message() const;
  bool operator==(const DownloadFailure&) const = default;
};

}  // namespace nimbletype
