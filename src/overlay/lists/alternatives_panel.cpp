#include "overlay/lists/alternatives_panel.h"

namespace nimbletype {
namespace {

constexpr Milliseconds stepTime{250};
constexpr unsigned steps = 4;  // of the dots

std::vector<ListRow> rowsOf(const AlternativesModel& model) {
  std::vector<ListRow> rows;
  rows.reserve(model.items.size());
  for (const std::string& item : model.items) rows.push_back({rowText(item, model.wordPrefix)});
  return rows;
}

}  // namespace

void AlternativesPanel::show(std::vector<std::string> items, std::string anchorBefore, std::string wordPrefix,
                             const BottomLeftRect& caretRect) {
  model_ = AlternativesModel{std::move(items), 0, std::move(anchorBefore), std::move(wordPrefix), {}};
  list_.anchor(caretRect);
  draw();
  if (changed_) changed_();
}

void AlternativesPanel::setItems(std::vector<std::string> items) {
  if (!model_ || model_->items == items) return;
  model_->items = std::move(items);
  if (model_->selected >= model_->items.size()) model_->selected = 0;
  draw();
  if (changed_) changed_();
}

void AlternativesPanel::setHint(std::optional<std::string> hint, bool moves) {
  if (!model_) return;
  model_->hint = std::move(hint);
  moves_ = moves;
  step_ = 0;
  animation_.cancel();
  if (moves_) animate();
  draw();
}

// No timer runs for a list that stands still or is hidden.
void AlternativesPanel::animate() {
  animation_ = loop_.after(stepTime, [this] {
    step_ = (step_ + 1) % steps;
    draw();
    animate();
  });
}

void AlternativesPanel::moveSelection(int by) {
  if (!model_ || model_->items.empty()) return;
  model_->selected = movedRow(model_->selected, by, model_->items.size());
  draw();
  if (changed_) changed_();
}

void AlternativesPanel::hide() {
  if (!model_) return;
  model_.reset();
  animation_.cancel();
  list_.hide();
  if (changed_) changed_();
}

std::string AlternativesPanel::chosenText() const {
  if (!model_ || model_->items.empty()) return {};
  return rowText(model_->items[model_->selected], model_->wordPrefix);
}

AlternativeChoice AlternativesPanel::choice() const {
  if (!model_ || model_->items.empty()) return {};
  return choiceOf(model_->items[model_->selected], model_->wordPrefix);
}

void AlternativesPanel::draw() {
  const std::vector<ListRow> rows = rowsOf(*model_);
  std::optional<std::string> note = model_->hint;
  if (note && moves_) *note += std::string(step_, '.');
  list_.draw({rows, model_->selected, note});
}

}  // namespace nimbletype
