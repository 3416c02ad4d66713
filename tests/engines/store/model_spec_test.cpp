#include "engines/store/model_spec.h"

#include <gtest/gtest.h>

#include "platform/scripted/storage/memory_defaults_store.h"
#include "platform/scripted/system/recording_system_log.h"

namespace nimbletype {
namespace {

TEST(ModelHub, MayBeAMirror) {
  struct Row {
    std::optional<DefaultsValue> setting;
    std::string hub;
    bool isLogged;
  };
  const std::string own(publicModelHub);
  const std::vector<Row> table{
      {std::nullopt, own, false},
      {"https://mirror.example", "https://mirror.example", false},
      {"https://mirror.example:8443/hub/", "https://mirror.example:8443/hub", false},
      {"http://127.0.0.1:8000", "http://127.0.0.1:8000", false},
      {"http://localhost", "http://localhost", false},
      {"http://mirror.example", own, true},
      {"http://localhost.mirror.example", own, true},
      {"ftp://mirror.example", own, true},
      {"mirror.example", own, true},
      {"https://", own, true},
      {"https://mirror.example/?a=", own, true},
      {"https://mirror.example/#", own, true},
      {"https://mirror example", own, true},
      {"", own, true},
      {true, own, true},
  };
  for (const auto& [setting, hub, isLogged] : table) {
    MemoryDefaultsStore defaults;
    RecordingSystemLog log;
    if (setting) defaults.set("modelHub", *setting);
    EXPECT_EQ(modelHub(defaults, log), hub);
    EXPECT_EQ(!log.lines.empty(), isLogged) << hub;
  }
}

TEST(ModelSpec, IsFetchedFromTheHubAtOnePinnedVersion) {
  const auto spec = builtInModel("https://mirror.example");
  EXPECT_EQ(spec.address,
            "https://mirror.example/ggml-org/gemma-4-E2B-GGUF/resolve/"
            "75f8d25cab245d2254ba3e0405679226b9f58fff/gemma-4-E2B-Q8_0.gguf");
  EXPECT_TRUE(isDownloadAddress(builtInModel().page));
  EXPECT_TRUE(spec.address.ends_with("/" + spec.fileName));
}

}  // namespace
}  // namespace nimbletype
