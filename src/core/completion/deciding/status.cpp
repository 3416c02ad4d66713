#include "core/completion/deciding/status.h"

namespace nimbletype {

std::string Status::label() const {
  switch (state) {
    case Case::idle:
      return "Ready";
    case Case::waiting:
      return "Waiting for a pause";
    case Case::thinking:
      return "Thinking";
    case Case::showing:
      return "Showing a suggestion";
    case Case::blocked:
    case Case::failed:
      break;
  }
  return text;
}

}  // namespace nimbletype
