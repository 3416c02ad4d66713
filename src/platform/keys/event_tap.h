#pragma once
#include <functional>
#include <span>

#include "platform/keys/keys.h"

namespace nimbletype {

// Sees key presses and pointer presses of the whole desktop before applications do. Main thread only.
class EventTap {
 public:
  // True swallows the event. Called on the main thread; must answer at once.
  using Handler = std::function<bool(const TapEvent&)>;

  virtual ~EventTap() = default;
  // False when the desktop does not allow it. Starting a running tap succeeds at once.
  virtual bool start(Handler handler) = 0;
  virtual void stop() = 0;
  // False as well once the desktop has taken the tap away; it can be started again.
  virtual bool isRunning() const = 0;
  // The keys that could be taken right now: those something is shown for. Other keys may or may not reach the
  // handler, and its answer for them counts for nothing.
  virtual void setTakeable(std::span<const KeyCombo> shown) = 0;
  // The global shortcuts, takeable at any time.
  virtual void setShortcuts(std::span<const KeyCombo> shortcuts) = 0;
};

}  // namespace nimbletype
