#pragma once
#include <string>
#include <variant>
#include <vector>

#include "platform/keys/event_poster.h"
#include "text/text.h"

namespace nimbletype {

// Keeps what was posted instead of posting it.
class RecordingEventPoster : public EventPoster {
 public:
  using Posted = std::variant<KeyCombo, std::u16string>;

  bool mayPost() const override { return allowed; }
  bool begin() override { return open_ = hasSource; }
  void end() override { open_ = false; }
  bool suits(std::u16string_view text) const override { return text.size() <= longestText; }
  void press(std::uint16_t keyCode, ModifierSet modifiers) override {
    if (open_) posted.emplace_back(KeyCombo{keyCode, modifiers});
  }
  void type(std::u16string_view chunk) override {
    if (open_) posted.emplace_back(std::u16string(chunk));
  }

  // What a field would have received: Space and text appended, Delete removing the last character.
  std::string text() const;

  std::vector<Posted> posted;
  bool allowed = true, hasSource = true;
  std::size_t longestText = 1'000'000;  // in UTF-16 units; anything longer does not suit

 private:
  bool open_ = false;
};

}  // namespace nimbletype
