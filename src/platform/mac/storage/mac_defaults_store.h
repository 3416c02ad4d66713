#pragma once
#import <Foundation/Foundation.h>

#include "platform/storage/defaults_store.h"

namespace nimbletype {

// The port over the user defaults of the application. `keys` lists what is stored for this application alone.
class MacDefaultsStore final : public DefaultsStore {
 public:
  // The domain is the application's bundle identifier; other programs of ours read it as well.
  explicit MacDefaultsStore(NSString* domain);
  std::optional<DefaultsValue> get(std::string_view key) const override;
  void set(std::string_view key, const DefaultsValue& value) override;
  void remove(std::string_view key) override;
  std::vector<std::string> keys() const override;

 private:
  NSString* domain_;
  NSUserDefaults* defaults_;
};

}  // namespace nimbletype
