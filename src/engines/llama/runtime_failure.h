#pragma once
#include <cstdint>
#include <string>

namespace nimbletype {

// Why the model wrote nothing.
struct RuntimeFailure {
  enum class Case { modelNotLoaded, noContext, tokenisation, decoding, cancelled };
  Case reason = Case::cancelled;
  std::int32_t status = 0;  // of `decoding`

  std::string message() const;
  bool operator==(const RuntimeFailure&) const = default;
};

}  // namespace nimbletype
