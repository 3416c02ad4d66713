#pragma once
#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "core/app/migration/earlier_files.h"
#include "core/app/migration/earlier_values.h"
#include "platform/storage/defaults_store.h"
#include "platform/storage/secret_store.h"
#include "platform/system/background_work.h"
#include "platform/system/system_log.h"

namespace nimbletype {

// Carries the things of the maker's earlier product over, once: what is here already is never overwritten,
// and nothing is changed there. What fails, or is cut short, is tried again by the next start. Main thread
// only.
class Migration {
 public:
  struct Services {
    DefaultsStore& defaults;
    const DefaultsStore& earlierDefaults;
    SecretStore& secrets;
    SecretStore& earlierSecrets;
    BackgroundWork& background;
    SystemLog& log;
  };
  struct Folders {
    std::filesystem::path earlier, ours;
  };
  struct Handlers {
    std::function<void()> memoryMayLoad;   // always called once, at once where nothing is to wait for
    std::function<void()> largeFilesCame;  // in a later turn, if at all
  };
  // From this size on a file is linked instead of copied. Such files are models, which nobody writes in
  // place.
  static constexpr std::uintmax_t largeSize = 8U << 20U;

  // Carries over what can be had at once: settings and files. Nothing of ours may have been read before.
  Migration(const Services& services, Folders folders);
  // The rest: the memory, whose key is asked for, and large files where the disk knows no links. Once.
  void finish(Handlers handlers);

 private:
  void takeSettings();
  void takeFiles();
  void takeFile(const EarlierFile& file);
  void copyLargeFiles();
  void takeMemory();
  void takeMemory(const FoundSecret& earlierKey, const FoundSecret& ourKey);
  void takeKey(const std::string& key);
  void setMemoryAside();
  bool copyMemory(std::string_view nameEnd);
  void endMemory();
  void endPart();
  void failed(std::string_view what, std::string_view why);

  Services s_;
  Folders folders_;
  bool isDone_;
  std::vector<std::filesystem::path> largeFiles_;
  std::string failure_;  // the first one
  Handlers handlers_;
  int partsLeft_ = 2;  // of `finish`
  Task copying_, secret_;
};

}  // namespace nimbletype
