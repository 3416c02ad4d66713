#pragma once
#import <Foundation/Foundation.h>

#include "platform/system/permission_source.h"

namespace nimbletype {

// The port over the system's privacy settings.
class MacPermissionSource final : public PermissionSource {
 public:
  MacPermissionSource() = default;
  ~MacPermissionSource() override { onTrustChange({}); }
  MacPermissionSource(const MacPermissionSource&) = delete;
  MacPermissionSource& operator=(const MacPermissionSource&) = delete;

  bool isTrusted() const override;
  void askForTrust() override;
  void onTrustChange(std::function<void()> changed) override;
  bool canRecordScreen() const override;
  bool askForScreenRecording() override;
  void openSettings(std::string_view address) override;

 private:
  id<NSObject> registration_ = nil;
};

}  // namespace nimbletype
