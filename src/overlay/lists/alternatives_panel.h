#pragma once
#include <functional>

#include "overlay/lists/alternatives_model.h"
#include "overlay/lists/caret_list.h"
#include "platform/system/main_loop.h"

namespace nimbletype {

// The list of other suggestions under the caret. It never has the focus; keys reach it through the engine.
class AlternativesPanel {
 public:
  AlternativesPanel(const CaretList::Services& services, MainLoop& loop) : list_(services, {}), loop_(loop) {}

  // `caretRect` in screen points, origin at the bottom left. Row 0 is highlighted.
  void show(std::vector<std::string> items, std::string anchorBefore, std::string wordPrefix,
            const BottomLeftRect& caretRect);
  // Further rows, or other ones in place of those shown; the highlight stays on its row.
  void setItems(std::vector<std::string> items);
  // The line under the rows. One that `moves` has dots that come and go, to say that there is more to come.
  void setHint(std::optional<std::string> hint, bool moves = false);
  // By one row, from the last to the first and back.
  void moveSelection(int by);
  void hide();

  bool isVisible() const { return model_.has_value(); }
  // None while hidden.
  const std::optional<AlternativesModel>& model() const { return model_; }
  std::string chosenText() const;
  AlternativeChoice choice() const;

  // Called when rows or highlight have changed, and when it is hidden.
  void onChanged(std::function<void()> changed) { changed_ = std::move(changed); }

 private:
  void draw();
  void animate();

  CaretList list_;
  MainLoop& loop_;
  std::optional<AlternativesModel> model_;
  bool moves_ = false;
  unsigned step_ = 0;
  Task animation_;
  std::function<void()> changed_;
};

}  // namespace nimbletype
