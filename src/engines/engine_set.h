#pragma once
#include <memory>
#include <vector>

#include "core/settings/preferences.h"
#include "engines/provider/completion_provider.h"
#include "engines/store/model_locator.h"
#include "platform/network/http_client.h"
#include "platform/on_device/on_device_model.h"
#include "platform/storage/secret_store.h"
#include "platform/system/main_loop.h"
#include "platform/system/system_log.h"

namespace nimbletype {

// What the engines work with. All of it outlives them.
struct EngineServices {
  MainLoop& loop;
  const Preferences& prefs;
  ModelLocator& model;
  HttpClient& http;
  SecretStore& secrets;
  OnDeviceModel& onDevice;
  SystemLog& log;
};

// One provider for each engine.
std::vector<std::unique_ptr<CompletionProvider>> makeProviders(const EngineServices& services);

}  // namespace nimbletype
