#pragma once
#include <filesystem>
#include <functional>
#include <memory>

#include "platform/language/region_source.h"
#include "platform/network/http_client.h"
#include "platform/network/http_downloads.h"
#include "platform/on_device/on_device_model.h"
#include "platform/storage/defaults_store.h"
#include "platform/storage/disk_space.h"
#include "platform/storage/secret_store.h"
#include "platform/system/background_work.h"
#include "platform/system/main_loop.h"
#include "platform/system/system_log.h"

namespace nimbletype::cli {

// What a command may use of the desktop: everything that needs no display. Each is made when it is first
// asked for. Needs the main thread.
class Desktop {
 public:
  virtual ~Desktop() = default;
  virtual MainLoop& loop() = 0;
  virtual SystemLog& log() = 0;  // silent
  virtual HttpClient& http() = 0;
  virtual HttpDownloads& downloads() = 0;
  virtual SecretStore& secrets() = 0;
  virtual OnDeviceModel& onDevice() = 0;
  virtual BackgroundWork& background() = 0;
  virtual DiskSpace& disk() = 0;
  virtual RegionSource& region() = 0;
  virtual DefaultsStore& defaults() = 0;  // the application's own settings
  virtual std::filesystem::path dataFolder() const = 0;
  // Serves the loop until the condition, looked at after every turn, holds.
  virtual void runUntil(const std::function<bool()>& condition) = 0;
};

// One at a time.
std::unique_ptr<Desktop> makeDesktop();

}  // namespace nimbletype::cli
