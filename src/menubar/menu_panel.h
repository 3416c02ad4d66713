#pragma once
#include <functional>
#include <optional>

#include "menubar/menu_content.h"
#include "platform/desktop/geometry.h"

namespace nimbletype {

// The small window that shows the menu. Main thread only.
class MenuPanel {
 public:
  virtual ~MenuPanel() = default;
  // Opens under the item, or at the pointer where nobody knows where the item stands.
  virtual void open(const MenuContent& content, const std::optional<BottomLeftRect>& item) = 0;
  // What an open panel shows from now on.
  virtual void update(const MenuContent& content) = 0;
  virtual void close() = 0;
  virtual bool isOpen() const = 0;

  // A row was chosen. One listener, as for all here.
  virtual void onChosen(std::function<void(MenuAction)> chosen) = 0;
  // The user closed it: a click elsewhere, Escape, another application.
  virtual void onDismissed(std::function<void()> dismissed) = 0;
};

}  // namespace nimbletype
