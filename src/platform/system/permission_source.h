#pragma once
#include <functional>
#include <string_view>

namespace nimbletype {

// What the desktop lets this application do, as far as the user decides about it. Main thread only.
class PermissionSource {
 public:
  virtual ~PermissionSource() = default;

  // Whether this process may use Accessibility.
  virtual bool isTrusted() const = 0;
  // Lets the desktop ask the user; the answer comes later, and is told with `onTrustChange`.
  virtual void askForTrust() = 0;
  // Called when the desktop says that trust may have changed, which it may say too early. One listener; an
  // empty function ends it.
  virtual void onTrustChange(std::function<void()> changed) = 0;

  virtual bool canRecordScreen() const = 0;
  // Lets the desktop ask the user. True when it is allowed.
  virtual bool askForScreenRecording() = 0;

  // Opens a page of the desktop's own settings; nothing happens where it has none.
  virtual void openSettings(std::string_view address) = 0;
};

}  // namespace nimbletype
