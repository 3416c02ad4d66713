#include "core/app/migration/migration.h"

#include <atomic>
#include <memory>
#include <system_error>
#include <utility>

#include "core/settings/preferences.h"
#include "personal/memory/memory_vault.h"
#include "platform/storage/atomic_file.h"
#include "platform/storage/file_copy.h"

namespace nimbletype {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view logCategory = "migration";
constexpr std::string_view memoryName = "memory.sealed";
const std::atomic<bool> neverCancelled = false;

std::string_view reason(SecretFailure failure) {
  return failure == SecretFailure::locked ? "its key is locked" : "the store of its key does not answer";
}

bool isThere(const fs::path& path) {
  std::error_code error;
  return fs::exists(fs::symlink_status(path, error));
}

std::error_code linkFile(const fs::path& from, const fs::path& to) {
  std::error_code error;
  fs::create_directories(to.parent_path(), error);
  fs::create_hard_link(from, to, error);
  return error;
}

}  // namespace

Migration::Migration(const Services& services, Folders folders)
    : s_(services),
      folders_(std::move(folders)),
      isDone_(s_.defaults.get(migratedKey) == DefaultsValue(true)) {
  if (isDone_) return;
  takeSettings();
  takeFiles();
}

void Migration::finish(Handlers handlers) {
  handlers_ = std::move(handlers);
  if (isDone_) return handlers_.memoryMayLoad();
  copyLargeFiles();
  takeMemory();
}

// --- settings and files ---

void Migration::takeSettings() {
  for (const auto& [key, value] : settingsToTake(s_.earlierDefaults, s_.defaults))
    s_.defaults.set(key, value);
}

void Migration::takeFiles() {
  const auto earlier = filesIn(folders_.earlier);
  if (!earlier.problem.empty()) failed("a folder", earlier.problem);
  for (const auto& file : filesToCarry(earlier.files, takenPlaces(earlier.files, folders_.ours)))
    takeFile(file);
}

void Migration::takeFile(const EarlierFile& file) {
  const auto from = folders_.earlier / file.path, to = folders_.ours / file.path;
  if (file.size >= largeSize) {
    if (linkFile(from, to)) largeFiles_.push_back(file.path);
  } else if (const auto error = copyWhole(from, to, neverCancelled)) {
    failed(file.path.string(), error.message());
  }
}

void Migration::copyLargeFiles() {
  if (largeFiles_.empty()) return endPart();
  struct Failure {
    fs::path file;
    std::error_code error;
  };
  const auto failures = std::make_shared<std::vector<Failure>>();
  copying_ = s_.background.run(
      [files = std::move(largeFiles_), folders = folders_, failures](const std::atomic<bool>& cancelled) {
        for (const auto& file : files)
          if (const auto error = copyWhole(folders.earlier / file, folders.ours / file, cancelled))
            failures->push_back({file, error});
      },
      [this, failures] {
        for (const auto& failure : *failures) failed(failure.file.string(), failure.error.message());
        handlers_.largeFilesCame();
        endPart();
      });
}

// --- the memory ---

void Migration::takeMemory() {
  std::error_code error;
  const auto ours = folders_.ours / memoryName;
  auto aside = ours;
  aside += AtomicFile::asideEnd;
  const auto status = fs::symlink_status(folders_.earlier / memoryName, error);
  if (!fs::is_regular_file(status) || isThere(aside)) return endMemory();
  if (isThere(ours)) {
    // Perhaps one that was begun while the key of the earlier one could not be had.
    if (AtomicFile(ours).read() != AtomicFile(folders_.earlier / memoryName).read())
      s_.log.log(logCategory, "the earlier writing memory stays where it is, as there is one here already");
    return endMemory();
  }
  secret_ = s_.earlierSecrets.read(MemoryVault::account, [this](const FoundSecret& earlierKey) {
    if (!earlierKey || !*earlierKey) return takeMemory(earlierKey, {});
    secret_ = s_.secrets.read(MemoryVault::account, [this, earlierKey](const FoundSecret& ourKey) {
      takeMemory(earlierKey, ourKey);
    });
  });
}

void Migration::takeMemory(const FoundSecret& earlierKey, const FoundSecret& ourKey) {
  switch (memoryMove(earlierKey, ourKey)) {
    case MemoryMove::keyThenFile:
      return takeKey(**earlierKey);
    case MemoryMove::file:
      copyMemory("");
      break;
    case MemoryMove::setAside:
      setMemoryAside();
      break;
    case MemoryMove::nothing:
      failed(memoryName, reason(earlierKey ? ourKey.error() : earlierKey.error()));
      break;
  }
  endMemory();
}

// Before the file: a start that is cut short in between finds the same key on both sides.
void Migration::takeKey(const std::string& key) {
  secret_ = s_.secrets.write(MemoryVault::account, key, [this](std::expected<void, SecretFailure> written) {
    if (written)
      copyMemory("");
    else
      failed(memoryName, reason(written.error()));
    endMemory();
  });
}

void Migration::setMemoryAside() {
  if (copyMemory(AtomicFile::asideEnd))
    s_.log.log(logCategory, "the earlier writing memory has no key that opens it and was set aside");
}

bool Migration::copyMemory(std::string_view nameEnd) {
  auto to = folders_.ours / memoryName;
  to += nameEnd;
  const auto error = copyWhole(folders_.earlier / memoryName, to, neverCancelled);
  if (error) failed(memoryName, error.message());
  return !error;
}

// --- the end ---

void Migration::endMemory() {
  handlers_.memoryMayLoad();
  endPart();
}

// The mark comes last, so that whatever is missing is tried again.
void Migration::endPart() {
  if (--partsLeft_ > 0) return;
  if (failure_.empty()) return s_.defaults.set(migratedKey, true);
  s_.log.log(logCategory, "not all could be carried over, the next start tries again; " + failure_);
}

void Migration::failed(std::string_view what, std::string_view why) {
  if (failure_.empty()) failure_ = std::string(what).append(": ").append(why);
}

}  // namespace nimbletype
