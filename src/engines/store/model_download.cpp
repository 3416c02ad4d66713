#include "engines/store/model_download.h"

#include <utility>

#include "engines/store/body_place.h"

namespace nimbletype {
namespace {

// Makes room for a new body. The note comes last, so that it never stands beside bytes of another version.
void beginAgain(const ModelFolder& folder, const ResumeNote& note) {
  folder.emptyPartial();
  writeResumeNote(folder.note(), note);
}

// A file that could not be written may be in the hands of another process.
bool isOurs(const DownloadFailure& failure) {
  return failure.reason != DownloadFailure::Case::notSaved;
}

}  // namespace

ModelDownload::ModelDownload(MainLoop& loop, HttpDownloads& downloads, SystemLog& log, ModelSpec spec,
                             ModelFolder folder)
    : loop_(loop), downloads_(downloads), log_(log), spec_(std::move(spec)), folder_(std::move(folder)) {}

void ModelDownload::start(Handlers handlers) {
  cancel();
  handlers_ = std::move(handlers);
  timeout_ = loop_.after(longestTransfer, [this] {
    log_.log("model", "the download took too long");
    interrupted();
  });
  transfer(folder_.resumableBytes());
}

void ModelDownload::cancel() {
  timeout_.cancel();
  transfer_.cancel();
}

void ModelDownload::transfer(std::int64_t held) {
  held_ = held;
  validator_ = held > 0 ? readResumeNote(folder_.note()).value_or(ResumeNote{}).validator : "";
  const auto place = [held, validator = validator_, spec = spec_,
                      folder = folder_](const DownloadHead& head) -> std::optional<std::int64_t> {
    const auto decided = placeBody(head, held, spec.size, validator);
    if (decided == BodyPlace::append) return held;
    if (decided != BodyPlace::fromZero) return std::nullopt;
    beginAgain(folder, {spec.address, spec.digest, validatorOf(head)});
    return 0;
  };
  transfer_ = downloads_.start(
      {spec_.address, headersToResume(held, validator_), folder_.partial(), spec_.size},
      {place, [this](std::int64_t size) { handlers_.progress(size); },
       [this](const DownloadEnd& end, const std::optional<DownloadHead>& head) { transferred(end, head); }});
}

void ModelDownload::transferred(const DownloadEnd& end, const std::optional<DownloadHead>& head) {
  using enum DownloadEnd::Case;
  if (end.result != complete) log_.log("model", "the download ended early: " + end.detail);
  if (end.result == turnedAway && head) return handleRefusal(*head);
  if (end.result == tooLong) return discard();
  if (end.result == notWritten) return finish(std::unexpected(Failure{Failure::Case::notSaved, end.detail}));
  if (end.result == redirectRefused) return finish(std::unexpected(Failure{Failure::Case::stopped, ""}));
  if (end.result == complete && folder_.isPartialWhole()) return finish({});
  interrupted();
}

void ModelDownload::handleRefusal(const DownloadHead& head) {
  switch (placeBody(head, held_, spec_.size, validator_)) {
    case BodyPlace::startOver:
      return startOver();
    case BodyPlace::wrongFile:
      return discard();
    case BodyPlace::refused:
      return finish(std::unexpected(Failure{Failure::Case::serverAnswered, std::to_string(head.status)}));
    default:
      return finish(std::unexpected(Failure{Failure::Case::stopped, ""}));
  }
}

// Cannot happen twice: without a range in the request nothing asks for it.
void ModelDownload::startOver() {
  log_.log("model", "the download starts over");
  folder_.removePartial();
  transfer_ = loop_.after(Milliseconds(0), [this] { transfer(0); });
  handlers_.progress(0);
}

void ModelDownload::discard() {
  folder_.removePartial();
  finish(std::unexpected(Failure{Failure::Case::mismatch, ""}));
}

void ModelDownload::interrupted() {
  transfer_.cancel();
  const bool holdsSome = folder_.resumableBytes() > 0;
  finish(std::unexpected(Failure{holdsSome ? Failure::Case::paused : Failure::Case::stopped, ""}));
}

void ModelDownload::finish(std::expected<void, Failure> result) {
  timeout_.cancel();
  if (!result && isOurs(result.error()) && folder_.resumableBytes() == 0) folder_.removePartial();
  const auto done = std::move(handlers_.done);  // may start the next one
  done(std::move(result));
}

}  // namespace nimbletype
