#pragma once
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace nimbletype {

// The desktop's spell checker. Every call answers at once from what is known: a correction that is still
// being looked up counts as none. Main thread only.
class SpellChecker {
 public:
  virtual ~SpellChecker() = default;
  // Never starts a look-up.
  virtual bool isMisspelled(std::string_view word) = 0;
  // Of a misspelled word; none where the checker has none to give, too. Looked up once and the same from then
  // on.
  virtual std::optional<std::string> correction(std::string_view word) = 0;
  // Whether a correction that `correction` could not give is still on its way; `onFound` hears when it has
  // come, or that there is none, in a later turn. A checker that knows every correction at once has nothing
  // to tell.
  virtual bool isLookingUp(std::string_view) const { return false; }
  // One listener at a time; an empty one ends it.
  virtual void onFound(const std::function<void()>&) {}
};

}  // namespace nimbletype
