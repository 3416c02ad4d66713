#pragma once
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace nimbletype {

// The desktop's spell checker. Every call answers at once from what is known: a correction that is still
// being looked up counts as none.
class SpellChecker {
 public:
  virtual ~SpellChecker() = default;
  virtual bool isMisspelled(std::string_view word) = 0;
  virtual std::optional<std::string> correction(std::string_view word) = 0;
  // Whether a correction that `correction` could not give is still on its way; `onFound` hears of it then. A
  // checker that knows every correction at once has nothing to tell.
  virtual bool isLookingUp(std::string_view) const { return false; }
  virtual void onFound(const std::function<void()>&) {}
};

}  // namespace nimbletype
