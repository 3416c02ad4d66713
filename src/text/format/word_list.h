#pragma once
#include <string>
#include <vector>

namespace nimbletype::text {

// "Mail", "Mail and Notes", "Mail, Notes and Pages".
std::string wordList(const std::vector<std::string>& words);

}  // namespace nimbletype::text
