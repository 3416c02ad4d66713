#pragma once
#import <Foundation/Foundation.h>

#include <string>
#include <string_view>

namespace nimbletype {

// Both directions go through UTF-16 and so keep every unit, a lone surrogate as U+FFFD; neither ever fails.
NSString* nsString(std::string_view utf8);
std::string utf8String(NSString* string);  // nil is the empty string

}  // namespace nimbletype
