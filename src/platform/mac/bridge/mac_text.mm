#include "platform/mac/bridge/mac_text.h"

#include "text/text.h"

namespace nimbletype {

NSString* nsString(std::string_view utf8) {
  const std::u16string units = text::toUtf16(utf8);
  return [[NSString alloc] initWithCharacters:reinterpret_cast<const unichar*>(units.data())
                                       length:units.size()];
}

std::string utf8String(NSString* string) {
  std::u16string units(string.length, u'\0');
  [string getCharacters:reinterpret_cast<unichar*>(units.data()) range:NSMakeRange(0, units.size())];
  return text::toUtf8(units);
}

}  // namespace nimbletype
