#pragma once
#include "platform/language/region.h"

namespace nimbletype {

// What System Settings say.
class MacRegion final : public RegionSource {
 public:
  Region region() const override;
};

}  // namespace nimbletype
