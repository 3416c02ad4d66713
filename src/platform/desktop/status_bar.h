#pragma once
#include <functional>
#include <optional>
#include <string>

#include "platform/desktop/geometry.h"

namespace nimbletype {

// What the item in the menu bar shows.
struct StatusIcon {
  std::string symbol;   // a symbol's name, such as "pause.circle.fill"
  std::string title;    // beside it; empty for the symbol alone
  std::string toolTip;  // one line for the pointer that rests on it, and for screen readers after the name
  bool operator==(const StatusIcon&) const = default;
};

// Where the item stands.
struct StatusItemPlace {
  bool isHosted = false;                // a menu bar or tray has taken it in
  std::optional<BottomLeftRect> frame;  // none where the desktop keeps it to itself
  bool operator==(const StatusItemPlace&) const = default;
};

// The application's one item in the menu bar or tray. Main thread only.
class StatusBar {
 public:
  virtual ~StatusBar() = default;
  // Puts the item up, or changes what it shows. It comes back by itself after the bar has gone and returned.
  virtual void show(const StatusIcon& icon) = 0;
  // Takes it away. Nothing happens when there is none.
  virtual void remove() = 0;
  virtual StatusItemPlace place() const = 0;
  // Draws the item as one whose panel is open, where the desktop does so.
  virtual void setHighlighted(bool highlighted) = 0;
  // The item was clicked. One listener; an empty function ends it.
  virtual void onClick(std::function<void()> clicked) = 0;
  // How long after start the bar needs to take the item in is the desktop's: this is called when `place` may
  // have become another one. One listener; an empty function ends it.
  virtual void onPlaceChange(std::function<void()> changed) = 0;
};

}  // namespace nimbletype
