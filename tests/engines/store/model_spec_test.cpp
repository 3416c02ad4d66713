#include "engines/store/model_spec.h"

#include <gtest/gtest.h>

#include "platform/scripted/storage/memory_defaults_store.h"
#include "platform/scripted/system/recording_system_log.h"

namespace nimbletype {
namespace {

TEST(ModelHub, MayBeAMirror) {
  const auto hubFor = [](const std::optional<DefaultsValue>& setting, bool isLogged) {
    MemoryDefaultsStore defaults;
    RecordingSystemLog log;
    if (setting) defaults.set("modelHub", *setting);
    const auto hub = modelHub(defaults, log);
    EXPECT_EQ(!log.lines.empty(), isLogged) << hub;
    return hub;
  };
  const std::pair<std::string, std::string> mirrors[] = {
      {"https://mirror.example", "https://mirror.example"},
      {"https://mirror.example:8443/hub/", "https://mirror.example:8443/hub"},
      {"http://127.0.0.1:8000", "http://127.0.0.1:8000"},
      {"http://localhost", "http://localhost"}};
  for (const auto& [setting, hub] : mirrors) EXPECT_EQ(hubFor(setting, false), hub);
  for (const std::string other :
       {"http://mirror.example", "http://localhost.mirror.example", "ftp://mirror.example", "mirror.example",
        "https://", "https://mirror.example/?a=", "https://mirror.example/#", "https://mirror example", ""})
    EXPECT_EQ(hubFor(other, true), publicModelHub) << other;
  EXPECT_EQ(hubFor(true, true), publicModelHub);
  EXPECT_EQ(hubFor(std::nullopt, false), publicModelHub);
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
