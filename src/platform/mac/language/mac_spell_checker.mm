#include "platform/mac/language/mac_spell_checker.h"

#include "platform/mac/bridge/mac_text.h"

namespace nimbletype {

MacSpellChecker::~MacSpellChecker() {
  [checker_ closeSpellDocumentWithTag:tag_];
}

// Both calls use the language that is chosen in the user's spelling settings.
bool MacSpellChecker::isMisspelled(std::string_view word) {
  const NSRange wrong = [checker_ checkSpellingOfString:nsString(word)
                                             startingAt:0
                                               language:checker_.language
                                                   wrap:NO
                                 inSpellDocumentWithTag:tag_
                                              wordCount:nil];
  return wrong.location != NSNotFound && wrong.length > 0;
}

std::optional<std::string> MacSpellChecker::correction(std::string_view word) {
  NSString* string = nsString(word);
  NSString* fix = [checker_ correctionForWordRange:NSMakeRange(0, string.length)
                                          inString:string
                                          language:checker_.language
                            inSpellDocumentWithTag:tag_];
  if (!fix) return std::nullopt;
  return utf8String(fix);
}

}  // namespace nimbletype
