#include "menubar/status_item_controller.h"

#include "menubar/status_icon.h"

namespace nimbletype {

StatusItemController::StatusItemController(const Services& services, Menu menu)
    : s_(services), menu_(std::move(menu)) {
  s_.bar.onClick([this] { toggleMenu(); });
  s_.panel.onChosen([this](MenuAction action) { chosen(action); });
  s_.panel.onDismissed([this] {
    dismissed_ = s_.loop.now();
    s_.bar.setHighlighted(false);
  });
}

StatusItemController::~StatusItemController() {
  removeItem();
  s_.bar.onClick({});
  s_.panel.onChosen({});
  s_.panel.onDismissed({});
}

void StatusItemController::installItem() {
  if (!s_.prefs.showMenuBarIcon.get()) return removeItem();
  isInstalled_ = true;
  refreshNow();
}

void StatusItemController::removeItem() {
  closeMenu();
  refresh_.cancel();
  isInstalled_ = false;
  shown_.reset();
  s_.bar.remove();
}

void StatusItemController::refreshItem() {
  refresh_ = s_.loop.after(Milliseconds{0}, [this] { refreshNow(); });
}

void StatusItemController::refreshNow() {
  const MenuState state = menu_.state();
  if (const StatusIcon icon = statusIcon(state); isInstalled_ && shown_ != icon) {
    shown_ = icon;
    s_.bar.show(icon);
  }
  if (s_.panel.isOpen()) s_.panel.update(menuContent(state, areChoicesUnfolded_));
}

void StatusItemController::toggleMenu() {
  const bool justDismissed = dismissed_ && s_.loop.now() - *dismissed_ < sameClick;
  dismissed_.reset();
  if (s_.panel.isOpen()) return closeMenu();
  if (!justDismissed) openMenu();
}

void StatusItemController::openMenu() {
  if (menu_.opening) menu_.opening();
  areChoicesUnfolded_ = false;
  s_.bar.setHighlighted(true);
  s_.panel.open(menuContent(menu_.state(), areChoicesUnfolded_), s_.bar.place().frame);
}

void StatusItemController::closeMenu() {
  if (!s_.panel.isOpen()) return;
  s_.panel.close();
  s_.bar.setHighlighted(false);
}

// A row that only changes what is shown leaves the menu open.
void StatusItemController::chosen(MenuAction action) {
  switch (action) {
    case MenuAction::none:
      return;
    case MenuAction::unfoldChoices:
      areChoicesUnfolded_ = !areChoicesUnfolded_;
      return refreshNow();
    case MenuAction::toggleCount:
    case MenuAction::quitRivals:
    case MenuAction::forceQuitRivals:
      break;
    default:
      closeMenu();
  }
  menu_.act(action);
}

}  // namespace nimbletype
