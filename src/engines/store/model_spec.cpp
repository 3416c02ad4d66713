#include "engines/store/model_spec.h"

#include "core/settings/local_address.h"
#include "platform/network/web_address.h"

namespace nimbletype {
namespace {

// A hub's address is put before a path, so nothing may follow its own.
bool isHubAddress(std::string_view address) {
  return isDownloadAddress(address) && address.find_first_of("?#") == std::string_view::npos;
}

}  // namespace

ModelSpec builtInModel(std::string_view hub) {
  const std::string base(hub);
  return {
      .displayName = "Gemma 4 E2B",
      .credit = "Google, converted for llama.cpp by ggml-org",
      .licence = "Apache 2.0",
      .page = base + "/google/gemma-4-E2B",
      .address = base +
                 "/ggml-org/gemma-4-E2B-GGUF/resolve/75f8d25cab245d2254ba3e0405679226b9f58fff/"
                 "gemma-4-E2B-Q8_0.gguf",
      .fileName = "gemma-4-E2B-Q8_0.gguf",
      .size = 4'967'478'336,
      .digest = "fcf7224c47518fca8a8a85391cfb0873a94d3dee4434fb77763113bfa7264d97",
  };
}

bool isDownloadAddress(std::string_view address) {
  const auto parts = parseWebAddress(address);
  if (!parts || parts->host.empty()) return false;
  return parts->scheme == "https" || (parts->scheme == "http" && isLocalAddress(address));
}

std::string modelHub(const DefaultsStore& defaults, SystemLog& log) {
  const auto value = defaults.get("modelHub");
  if (!value) return std::string(publicModelHub);
  if (const auto* hub = std::get_if<std::string>(&*value); hub && isHubAddress(*hub)) {
    const auto last = hub->find_last_not_of('/');
    return hub->substr(0, last + 1);
  }
  log.log("model", "the setting modelHub is no https address; the public hub is used");
  return std::string(publicModelHub);
}

}  // namespace nimbletype
