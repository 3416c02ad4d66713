#pragma once
#include <filesystem>
#include <functional>
#include <memory>
#include <string>

#include "engines/store/model_download.h"
#include "engines/store/model_folder.h"
#include "engines/store/model_locator.h"
#include "engines/store/model_spec.h"
#include "platform/storage/disk_space.h"
#include "platform/system/background_work.h"
#include "platform/system/observers.h"

namespace nimbletype {

// Knows where the built-in model is and whether it is there and checked; fetches it and deletes it. A model
// that is there stays in use until a newly fetched one, checked, takes its place.
class ModelStore : public ModelLocator {
 public:
  using Phase = ModelPhase;
  struct Services {
    MainLoop& loop;
    HttpDownloads& downloads;
    BackgroundWork& background;
    const DiskSpace& disk;
    SystemLog& log;
  };
  // What must stay free beside the model.
  static constexpr std::int64_t spareBytes = 1'000'000'000;

  ModelStore(const Services& services, ModelSpec spec, std::filesystem::path folder);
  ModelStore(const ModelStore&) = delete;
  ModelStore& operator=(const ModelStore&) = delete;

  const ModelSpec& spec() const { return spec_; }
  std::filesystem::path modelFile() const { return folder_.model(); }

  // Looks anew, also while another one is being fetched.
  std::optional<std::string> installedModel() override;
  // Of what was done last. A failure stays until something else happens, whether an earlier model is there or
  // not.
  Phase phase() const override { return phase_; }
  // Tells of every change of the phase until the task is destroyed.
  [[nodiscard]] Task observe(Observers::Callback changed) const { return observers_.add(std::move(changed)); }

  // Notices that the model has come or gone by other hands. Costs two looks at the disk.
  void refresh();
  // Goes on where an earlier download stopped. Does nothing while one is under way.
  void startDownload();
  // Keeps what was fetched.
  void cancelDownload();
  // Also what was fetched of it.
  void deleteModel();

 private:
  bool isUnderWay() const;
  std::optional<std::int64_t> missingSpace() const;
  void fetch();
  void check();
  void checked(const std::expected<std::string, std::error_code>& digest);
  void fail(const DownloadFailure& failure);
  void settle();
  void setPhase(Phase phase);

  Services services_;
  ModelSpec spec_;
  ModelFolder folder_;
  bool isInstalled_ = false;  // when last looked
  Phase phase_;
  Observers observers_;
  ModelDownload download_;
  Task check_;
};

}  // namespace nimbletype
