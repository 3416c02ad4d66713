#pragma once
#include <nlohmann/json.hpp>

#include "core/rules/rule_types.h"
#include "platform/storage/file_store.h"
#include "platform/system/system_log.h"

namespace nimbletype {

// The rules as JSON. What is not understood is kept when it stands at the top or inside a rule that is kept.
class RulesFile {
 public:
  RulesFile(FileStore& store, SystemLog& log) : store_(store), log_(log) {}

  // What the file holds as far as it makes sense; nothing when there is none.
  RulesState load();
  bool save(const RulesState& state);
  // What the file would hold.
  nlohmann::ordered_json json(const RulesState& state) const;

 private:
  FileStore& store_;
  SystemLog& log_;
  nlohmann::ordered_json read_ = nlohmann::ordered_json::object();
};

}  // namespace nimbletype
