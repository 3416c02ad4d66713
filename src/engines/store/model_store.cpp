#include "engines/store/model_store.h"

#include <utility>

#include "engines/store/file_digest.h"
#include "text/format/byte_count.h"

namespace nimbletype {

using Failure = DownloadFailure;

ModelStore::ModelStore(const Services& services, ModelSpec spec, std::filesystem::path folder)
    : services_(services),
      spec_(std::move(spec)),
      folder_(std::move(folder), spec_),
      download_(services.loop, services.downloads, services.log, spec_, folder_) {
  settle();
}

std::optional<std::string> ModelStore::installedModel() {
  refresh();
  const bool isThere = isUnderWay() ? folder_.isInstalled() : isInstalled_;
  return isThere ? std::optional(modelFile().string()) : std::nullopt;
}

bool ModelStore::isUnderWay() const {
  return phase_.state == Phase::Case::downloading || phase_.state == Phase::Case::checking;
}

void ModelStore::refresh() {
  if (!isUnderWay() && folder_.isInstalled() != isInstalled_) settle();
}

void ModelStore::startDownload() {
  if (isUnderWay()) return;
  if (folder_.findIncoming()) return check();
  if (const auto needed = missingSpace())
    return fail({Failure::Case::tooLittleSpace, text::formatByteCount(*needed)});
  if (const auto error = folder_.create()) return fail({Failure::Case::notSaved, error.message()});
  fetch();
}

// How much is needed, when there is less. What an earlier download left takes its space already.
std::optional<std::int64_t> ModelStore::missingSpace() const {
  const auto needed = spec_.size + spareBytes - folder_.resumableBytes();
  const auto available = services_.disk.available(folder_.path());
  return available && *available < needed ? std::optional(needed) : std::nullopt;
}

void ModelStore::fetch() {
  const auto show = [this](std::int64_t held) { setPhase({Phase::Case::downloading, held, spec_.size, {}}); };
  download_.start({show, [this](std::expected<void, Failure> result) {
                     if (!result) return fail(result.error());
                     if (const auto error = folder_.moveToIncoming())
                       return fail({Failure::Case::notSaved, error.message()});
                     check();
                   }});
  show(folder_.resumableBytes());
}

void ModelStore::check() {
  using Digest = std::expected<std::string, std::error_code>;
  const auto digest = std::make_shared<Digest>();
  check_ = services_.background.run(
      [digest, file = folder_.incoming()](const std::atomic<bool>& cancelled) {
        *digest = sha256OfFile(file, cancelled);
      },
      [this, digest] { checked(*digest); });
  setPhase({Phase::Case::checking, 0, 0, {}});
}

void ModelStore::checked(const std::expected<std::string, std::error_code>& digest) {
  if (!digest) return fail({Failure::Case::notInstalled, digest.error().message()});
  if (*digest != spec_.digest) {
    folder_.removeIncoming();
    return fail({Failure::Case::mismatch, ""});
  }
  if (const auto error = folder_.install()) return fail({Failure::Case::notInstalled, error.message()});
  settle();
}

void ModelStore::cancelDownload() {
  if (!isUnderWay()) return;
  download_.cancel();
  check_.cancel();
  settle();
}

void ModelStore::deleteModel() {
  download_.cancel();
  check_.cancel();
  if (const auto error = folder_.removeModel())
    services_.log.log("model", "the model could not be deleted: " + error.message());
  settle();
}

void ModelStore::fail(const DownloadFailure& failure) {
  services_.log.log("model", failure.message());
  isInstalled_ = folder_.isInstalled();
  setPhase({Phase::Case::failed, 0, 0, failure.message()});
}

// The phase when nothing is under way.
void ModelStore::settle() {
  isInstalled_ = folder_.isInstalled();
  setPhase({isInstalled_ ? Phase::Case::installed : Phase::Case::notDownloaded, 0, 0, {}});
}

void ModelStore::setPhase(Phase phase) {
  if (phase == phase_) return;
  phase_ = std::move(phase);
  observers_.notify();
}

}  // namespace nimbletype
