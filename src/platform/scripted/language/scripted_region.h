#pragma once
#include "platform/language/region.h"

namespace nimbletype {

class ScriptedRegion : public RegionSource {
 public:
  Region region() const override { return current; }
  Region current{"en_US", "UTC"};
};

}  // namespace nimbletype
