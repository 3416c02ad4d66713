#pragma once
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/storage/defaults_store.h"
#include "platform/system/system_log.h"

namespace nimbletype {

// One model file: where it comes from and how it is recognised.
struct ModelSpec {
  std::string displayName, credit, licence;
  std::string page;      // of the model the file was converted from
  std::string address;   // of the file, pinned to one version
  std::string fileName;  // a plain name, without a folder
  std::int64_t size = 0;
  std::string digest;  // SHA-256, lower-case hex
  bool operator==(const ModelSpec&) const = default;
};

inline constexpr std::string_view publicModelHub = "https://huggingface.co";

// The one model of the built-in engine, fetched from this hub: the public one or a mirror of it.
ModelSpec builtInModel(std::string_view hub = publicModelHub);

// Whether a model may be fetched from here: https, or http that stays on this machine.
bool isDownloadAddress(std::string_view address);

// The hub named by the hidden setting "modelHub", without a slash at its end; the public one when there is no
// such setting. A value that may not be used is logged and passed over.
std::string modelHub(const DefaultsStore& defaults, SystemLog& log);

}  // namespace nimbletype
