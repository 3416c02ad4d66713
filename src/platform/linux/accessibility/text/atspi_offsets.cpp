#include "platform/linux/accessibility/text/atspi_offsets.h"

#include <algorithm>

namespace nimbletype {

AtspiOffsets::AtspiOffsets(std::int64_t start, std::string_view text) {
  std::int64_t offset = start;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    const bool continues = (byte & 0xC0) == 0x80;
    if (continues) continue;
    if (byte >= 0xF0) wide_.push_back(offset);  // four bytes: beyond U+FFFF
    ++offset;
  }
}

std::int64_t AtspiOffsets::toUtf16(std::int64_t offset) const {
  return offset + (std::lower_bound(wide_.begin(), wide_.end(), offset) - wide_.begin());
}

std::int64_t AtspiOffsets::fromUtf16(std::int64_t units) const {
  std::int64_t passed = 0;
  for (const std::int64_t wide : wide_) {
    const std::int64_t unit = wide + passed;
    if (units <= unit) break;
    if (units == unit + 1) return wide;
    ++passed;
  }
  return units - passed;
}

std::int64_t AtspiOffsets::endFromUtf16(std::int64_t units) const {
  const std::int64_t offset = fromUtf16(units);
  return toUtf16(offset) < units ? offset + 1 : offset;
}

}  // namespace nimbletype
