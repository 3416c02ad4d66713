#pragma once
#include "platform/language/region_source.h"

namespace nimbletype {

// What System Settings say.
class MacRegionSource final : public RegionSource {
 public:
  Region region() const override;
};

}  // namespace nimbletype
