#pragma once
#import <Foundation/Foundation.h>

#include "platform/defaults_store.h"

namespace nimbletype {

// The port over the standard user defaults. `keys` lists what is stored for this application alone.
class MacDefaultsStore final : public DefaultsStore {
 public:
  // The domain is the bundle identifier under which the standard defaults are stored.
  explicit MacDefaultsStore(NSString* domain) : domain_([domain copy]) {}
  std::optional<DefaultsValue> get(std::string_view key) const override;
  void set(std::string_view key, const DefaultsValue& value) override;
  void remove(std::string_view key) override;
  std::vector<std::string> keys() const override;

 private:
  NSString* domain_;
};

}  // namespace nimbletype
