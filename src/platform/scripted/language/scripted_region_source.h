#pragma once
#include "platform/language/region_source.h"

namespace nimbletype {

class ScriptedRegionSource : public RegionSource {
 public:
  Region region() const override { return current; }
  Region current{"en_US", "UTC"};
};

}  // namespace nimbletype
