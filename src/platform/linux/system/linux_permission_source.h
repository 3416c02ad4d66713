#pragma once
#include "platform/accessibility/accessibility.h"
#include "platform/system/permission_source.h"

namespace nimbletype {

// An X11 desktop allows every program everything: access is there when the accessibility bus is, and there is
// nobody to ask.
class LinuxPermissionSource final : public PermissionSource {
 public:
  explicit LinuxPermissionSource(Accessibility& accessibility) : accessibility_(accessibility) {}

  bool isTrusted() const override { return accessibility_.isTrusted(); }
  void askForTrust() override {}
  void onTrustChange(std::function<void()>) override {}
  bool canRecordScreen() const override { return true; }
  bool askForScreenRecording() override { return true; }
  void openSettings(std::string_view) override {}

 private:
  Accessibility& accessibility_;
};

}  // namespace nimbletype
