#pragma once
#include <cstdint>
#include <string>

namespace nimbletype::text {

// The size of a file as people read it, in steps of a thousand: "999 bytes", "12 KB", "1.5 MB", "5.97 GB".
// The words and the decimal mark are those of `locale`, such as "de_DE".
std::string formatByteCount(std::int64_t bytes, const std::string& locale = "en");

}  // namespace nimbletype::text
