#pragma once
#include <string_view>

namespace nimbletype {

// Whether a dictionary's suggestion is surely what was meant: two neighbouring letters exchanged, or one
// letter of a double one too many or too few inside the word, or an apostrophe left out. Anything looser
// would "correct" words that are only half typed.
bool isSureCorrection(std::string_view word, std::string_view suggestion);

}  // namespace nimbletype
