#pragma once
#include <functional>
#include <optional>

#include "overlay/emoji/emoji_index.h"
#include "overlay/lists/caret_list.h"

namespace nimbletype {

// The emoji offered in place of a colon and a word.
struct EmojiPickerModel {
  static constexpr std::size_t screenful = 8;  // rows at most

  std::vector<EmojiItem> items;
  std::size_t selected = 0;
  std::string replacing;  // the text before the caret that the chosen one replaces
  bool operator==(const EmojiPickerModel&) const = default;
};

// What is said of a word after a colon that no emoji has.
std::string noEmojiText(std::string_view query);

// The list of emoji under the caret. It never has the focus; keys reach it through the engine.
class EmojiPickerPanel {
 public:
  explicit EmojiPickerPanel(const CaretList::Services& services)
      : list_(services, {.width = 320, .rowHeight = 28}) {}

  // `caret` in screen points, origin at the bottom left. A list other than the one shown starts at its first
  // row; without items it says that nothing matches. The panel stays where it opened while the caret moves on
  // along its line.
  void show(std::vector<EmojiItem> items, std::string replacing, const BottomLeftRect& caret);
  // By one row, from the last to the first and back.
  void moveSelection(int by);
  void dismiss();

  bool isVisible() const { return model_.has_value(); }
  // None while hidden.
  const std::optional<EmojiPickerModel>& model() const { return model_; }
  bool canChoose() const { return model_ && !model_->items.empty(); }
  // The highlighted emoji; none while there is nothing to choose from.
  std::optional<std::string> choose() const;

  // Called when rows or highlight have changed, and when it is hidden.
  void onChanged(std::function<void()> changed) { changed_ = std::move(changed); }

 private:
  void draw();

  CaretList list_;
  std::optional<EmojiPickerModel> model_;
  std::function<void()> changed_;
};

}  // namespace nimbletype
