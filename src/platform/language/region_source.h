#pragma once
#include <string>

namespace nimbletype {

// Where the user is and how numbers are written there.
struct Region {
  std::string locale;    // such as "de_DE"
  std::string timeZone;  // an IANA name
  bool operator==(const Region&) const = default;
};

// The system's region as it is now: a traveller's changes while the application runs. A part that the system
// does not tell is empty, which stands for whatever ICU takes for the system's own. Main thread only.
class RegionSource {
 public:
  virtual ~RegionSource() = default;
  virtual Region region() const = 0;
};

}  // namespace nimbletype
