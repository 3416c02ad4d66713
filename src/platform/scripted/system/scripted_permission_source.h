#pragma once
#include <string>
#include <utility>
#include <vector>

#include "platform/system/permission_source.h"

namespace nimbletype {

// A desktop whose user is the script: it grants, takes back and counts what it is asked.
class ScriptedPermissionSource : public PermissionSource {
 public:
  bool isTrusted() const override { return trusted; }
  void askForTrust() override { ++asked; }
  void onTrustChange(std::function<void()> changed) override { changed_ = std::move(changed); }
  bool canRecordScreen() const override { return recording; }
  bool askForScreenRecording() override { return recording = recording || grantsRecording; }
  void openSettings(std::string_view address) override { opened.emplace_back(address); }

  void tell() {
    if (changed_) changed_();
  }

  bool trusted = false, recording = false;
  bool grantsRecording = false;  // the user allows it when asked
  int asked = 0;
  std::vector<std::string> opened;

 private:
  std::function<void()> changed_;
};

}  // namespace nimbletype
