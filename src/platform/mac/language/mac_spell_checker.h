#pragma once
#import <AppKit/AppKit.h>

#include "platform/language/spell_checker.h"

namespace nimbletype {

// The port over the system spell checker, under a document tag of its own.
class MacSpellChecker final : public SpellChecker {
 public:
  MacSpellChecker() = default;
  ~MacSpellChecker() override;
  MacSpellChecker(const MacSpellChecker&) = delete;
  MacSpellChecker& operator=(const MacSpellChecker&) = delete;

  bool isMisspelled(std::string_view word) override;
  std::optional<std::string> correction(std::string_view word) override;

 private:
  NSSpellChecker* checker_ = NSSpellChecker.sharedSpellChecker;
  NSInteger tag_ = [NSSpellChecker uniqueSpellDocumentTag];
};

}  // namespace nimbletype
