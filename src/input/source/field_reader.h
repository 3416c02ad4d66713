#pragma once
#include <optional>
#include <string>

#include "input/caret/caret_finder.h"
#include "input/caret/field_reading.h"
#include "input/field/field_snapshot.h"
#include "platform/desktop/workspace.h"
#include "platform/keys/secure_input.h"

namespace nimbletype {

// Reads one element of an application into a snapshot, all but the page and the window it lies in.
class FieldReader {
 public:
  FieldReader(const SecureInput& secureInput, const FontMetrics& fonts, SystemLog& log)
      : secureInput_(secureInput), caretFinder_(fonts, log) {}

  // A field that keeps its text to itself yields both a snapshot and a reason.
  struct Reading {
    std::optional<FieldSnapshot> snapshot;
    std::optional<std::string> whyNoField;
  };
  Reading read(const RunningApp& app, const AXElement& element);

 private:
  std::optional<FieldText> readText(const AXElement& element, FieldState& state);

  const SecureInput& secureInput_;
  FieldTextReader textReader_;
  CaretFinder caretFinder_;
};

}  // namespace nimbletype
