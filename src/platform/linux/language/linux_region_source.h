#pragma once
#include "platform/language/region_source.h"

namespace nimbletype {

// The locale that numbers are written in, from the environment, and the time zone from there or from where
// the system's clock points to now.
class LinuxRegionSource final : public RegionSource {
 public:
  Region region() const override;
};

}  // namespace nimbletype
