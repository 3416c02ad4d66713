#include "personal/memory/memory_state.h"

namespace nimbletype {
namespace {

std::string passages(std::size_t count) {
  return std::to_string(count) + (count == 1 ? " passage" : " passages");
}

}  // namespace

std::string sentenceFor(VaultFailure failure) {
  switch (failure) {
    case VaultFailure::keyLocked:
      return "Writing memory is paused until your Keychain is unlocked.";
    case VaultFailure::keyUnavailable:
      return "Writing memory is paused because your Keychain doesn't answer.";
    case VaultFailure::keyDamaged:
      return "Writing memory is paused because its key in your Keychain is damaged. Erase everything to "
             "start "
             "anew.";
    case VaultFailure::fileStays:
      return "Writing memory is paused because its file can be neither opened nor moved.";
    case VaultFailure::notErased:
      return "Not all files of the writing memory could be removed.";
    case VaultFailure::notWritten:
      break;
  }
  return "Your latest passages aren't saved yet. Is the disk full?";
}

std::string rememberedText(std::size_t count) {
  return count == 0 ? "Nothing remembered yet" : passages(count) + " remembered";
}

std::string fromHereText(std::size_t count) {
  return passages(count) + " from here";
}

}  // namespace nimbletype
