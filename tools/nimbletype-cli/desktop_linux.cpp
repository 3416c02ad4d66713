#include <QCoreApplication>
#include <optional>

#include "desktop.h"
#include "platform/linux/language/linux_region_source.h"
#include "platform/linux/on_device/absent_on_device_model.h"
#include "platform/linux/storage/json_defaults_store.h"
#include "platform/linux/storage/linux_disk_space.h"
#include "platform/linux/storage/secret_service_store.h"
#include "platform/linux/system/linux_background_work.h"
#include "platform/linux/system/linux_paths.h"
#include "platform/linux/system/stderr_system_log.h"
#include "platform/qt/network/qt_http_client.h"
#include "platform/qt/network/qt_http_downloads.h"
#include "platform/qt/system/qt_main_loop.h"
#include "platform/storage/atomic_file.h"

namespace nimbletype::cli {
namespace {

template <typename Adapter>
Adapter& made(std::optional<Adapter>& adapter, auto&&... arguments) {
  return adapter ? *adapter : adapter.emplace(arguments...);
}

class LinuxDesktop : public Desktop {
 public:
  MainLoop& loop() override { return loop_; }
  SystemLog& log() override { return log_; }
  HttpClient& http() override { return made(http_); }
  HttpDownloads& downloads() override { return made(downloads_, loop_); }
  SecretStore& secrets() override { return made(secrets_, loop_); }
  OnDeviceModel& onDevice() override { return made(onDevice_, loop_); }
  BackgroundWork& background() override { return made(background_, loop_); }
  DiskSpace& disk() override { return disk_; }
  RegionSource& region() override { return region_; }
  DefaultsStore& defaults() override { return made(defaults_, settings_, loop_, log_); }
  std::filesystem::path dataFolder() const override { return nimbletype::dataFolder(); }

  void runUntil(const std::function<bool()>& condition) override {
    while (!condition()) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  }

 private:
  static inline int argumentCount_ = 1;
  static inline char name_[] = "nimbletype-cli";
  static inline char* arguments_[] = {name_, nullptr};

  QCoreApplication application_{argumentCount_, arguments_};
  StderrSystemLog log_{false};
  QtMainLoop loop_;
  LinuxDiskSpace disk_;
  LinuxRegionSource region_;
  AtomicFile settings_{nimbletype::dataFolder() / "settings.json"};
  std::optional<QtHttpClient> http_;
  std::optional<QtHttpDownloads> downloads_;
  std::optional<SecretServiceStore> secrets_;
  std::optional<AbsentOnDeviceModel> onDevice_;
  std::optional<LinuxBackgroundWork> background_;
  std::optional<JsonDefaultsStore> defaults_;
};

}  // namespace

std::unique_ptr<Desktop> makeDesktop() {
  return std::make_unique<LinuxDesktop>();
}

}  // namespace nimbletype::cli
