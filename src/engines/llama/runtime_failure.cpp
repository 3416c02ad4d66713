#include "engines/llama/runtime_failure.h"

namespace nimbletype {

std::string RuntimeFailure::message() const {
  switch (reason) {
    case Case::modelNotLoaded:
      return "The model file couldn't be loaded";
    case Case::noContext:
      return "There wasn't enough memory to start the model";
    case Case::tokenisation:
      return "The text couldn't be prepared for the model";
    case Case::decoding:
      return "The model stopped with error " + std::to_string(status);
    case Case::cancelled:
      break;
  }
  return "The suggestion was cancelled";
}

}  // namespace nimbletype
