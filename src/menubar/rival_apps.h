#pragma once
#include <string>
#include <string_view>

namespace nimbletype {

// Tells other autocomplete applications, which answer the Tab key as this one does.
class RivalApps {
 public:
  // Of this application, which is no rival under any name; empty where it has none.
  explicit RivalApps(std::string ownBundleIdentifier) : own_(std::move(ownBundleIdentifier)) {}
  // An empty identifier is none: the name alone decides then.
  bool isRival(std::string_view bundleIdentifier, std::string_view localizedName) const;

 private:
  std::string own_;
};

}  // namespace nimbletype
