#import <Foundation/Foundation.h>

#include "desktop.h"
#include "platform/mac/bridge/mac_text.h"
#include "platform/mac/language/mac_region_source.h"
#include "platform/mac/network/mac_http_client.h"
#include "platform/mac/network/mac_http_downloads.h"
#include "platform/mac/on_device/mac_on_device_model.h"
#include "platform/mac/storage/mac_defaults_store.h"
#include "platform/mac/storage/mac_disk_space.h"
#include "platform/mac/storage/mac_secret_store.h"
#include "platform/mac/system/mac_background_work.h"
#include "platform/mac/system/mac_main_loop.h"
#include "platform/mac/system/mac_paths.h"

namespace nimbletype::cli {
namespace {

class SilentLog : public SystemLog {
  void log(std::string_view, std::string_view) override {}
};

class MacDesktop : public Desktop {
 public:
  MainLoop& loop() override { return loop_; }
  SystemLog& log() override { return log_; }
  HttpClient& http() override { return http_; }
  HttpDownloads& downloads() override { return downloads_; }
  SecretStore& secrets() override { return secrets_; }
  OnDeviceModel& onDevice() override { return onDevice_; }
  BackgroundWork& background() override { return background_; }
  DiskSpace& disk() override { return disk_; }
  RegionSource& region() override { return region_; }
  DefaultsStore& defaults() override { return defaults_; }
  std::filesystem::path dataFolder() const override { return nimbletype::dataFolder(); }

  void runUntil(const std::function<bool()>& condition) override {
    while (!condition())
      [NSRunLoop.currentRunLoop runMode:NSDefaultRunLoopMode beforeDate:NSDate.distantFuture];
  }

 private:
  MacMainLoop loop_;
  SilentLog log_;
  MacHttpClient http_;
  MacHttpDownloads downloads_{loop_};
  MacSecretStore secrets_;
  MacOnDeviceModel onDevice_;
  MacBackgroundWork background_;
  MacDiskSpace disk_;
  MacRegionSource region_;
  // A program without a bundle reads the application's settings by the name of its domain.
  MacDefaultsStore defaults_{@"com.moravelle.nimbletype"};
};

}  // namespace

std::unique_ptr<Desktop> makeDesktop() {
  return std::make_unique<MacDesktop>();
}

}  // namespace nimbletype::cli
