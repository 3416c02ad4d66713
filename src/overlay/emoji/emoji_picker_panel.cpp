#include "overlay/emoji/emoji_picker_panel.h"

#include <cmath>

namespace nimbletype {
namespace {

std::string_view withoutColons(std::string_view replacing) {
  if (replacing.starts_with(':')) replacing.remove_prefix(1);
  if (replacing.ends_with(':')) replacing.remove_suffix(1);
  return replacing;
}

std::optional<std::string> noteFor(const EmojiPickerModel& model) {
  if (!model.items.empty()) return std::nullopt;
  return noEmojiText(withoutColons(model.replacing));
}

bool isFurtherAlong(const BottomLeftRect& caret, const BottomLeftRect& line) {
  return caret.x >= line.x && std::abs(caret.y - line.y) < line.height / 2;
}

}  // namespace

std::string noEmojiText(std::string_view query) {
  return "No emoji match “" + std::string(query) + "”";
}

void EmojiPickerPanel::show(std::vector<EmojiItem> items, std::string replacing,
                            const BottomLeftRect& caret) {
  EmojiPickerModel next{std::move(items), 0, std::move(replacing)};
  if (model_ && model_->items == next.items && model_->replacing == next.replacing)
    next.selected = model_->selected;
  const bool isSame = model_ == next, stays = model_ && isFurtherAlong(caret, list_.caret());
  if (isSame && stays) return;
  if (!stays) list_.anchor(caret);
  model_ = std::move(next);
  draw();
  if (changed_ && !isSame) changed_();
}

void EmojiPickerPanel::moveSelection(int by) {
  if (!model_ || model_->items.empty()) return;
  model_->selected = movedRow(model_->selected, by, model_->items.size());
  draw();
  if (changed_) changed_();
}

void EmojiPickerPanel::dismiss() {
  if (!model_) return;
  model_.reset();
  list_.hide();
  if (changed_) changed_();
}

std::optional<std::string> EmojiPickerPanel::choose() const {
  if (!model_ || model_->items.empty()) return std::nullopt;
  return model_->items[model_->selected].emoji;
}

void EmojiPickerPanel::draw() {
  std::vector<ListRow> rows;
  for (const EmojiItem& item : model_->items) rows.push_back({item.name, item.emoji});
  list_.draw({rows, model_->selected, noteFor(*model_)});
}

}  // namespace nimbletype
