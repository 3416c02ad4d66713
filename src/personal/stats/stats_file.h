#pragma once
#include <map>
#include <nlohmann/json.hpp>

#include "personal/stats/day_stats.h"
#include "platform/storage/file_store.h"
#include "platform/system/system_log.h"

namespace nimbletype {

// The statistics as JSON. What is not understood is kept: keys at the top and inside a day, and days under
// names that are no days.
class StatsFile {
 public:
  StatsFile(FileStore& store, SystemLog& log) : store_(store), log_(log) {}

  // What the file holds as far as it makes sense. A file that holds no statistics is set aside.
  StatsSnapshot load();
  bool save(const StatsSnapshot& snapshot);
  // Only what is in the snapshot will be saved from now on.
  void forgetRest();
  // What the file would hold.
  nlohmann::ordered_json json(const StatsSnapshot& snapshot) const;

 private:
  FileStore& store_;
  SystemLog& log_;
  nlohmann::json restAtTop_, restOfDays_;
  std::map<text::Day, nlohmann::json> restOfDay_;
};

}  // namespace nimbletype
