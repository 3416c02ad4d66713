#pragma once
#include <unicode/umachine.h>

#include <string_view>

// What can be said about the borders of user-perceived characters from the properties of code points alone.
namespace nimbletype::text {

// Neighbours that never share a character, whatever stands around them.
bool surelyApart(UChar32 left, UChar32 right);

// Whether a stretch without such neighbours is plainly one character: a code point alone, a line ending, or a
// base followed by nothing but marks.
bool isOneCharacter(std::string_view stretch);

}  // namespace nimbletype::text
