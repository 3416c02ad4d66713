#pragma once
#include <optional>
#include <set>
#include <string>
#include <utility>

#include "input/caret/caret_geometry.h"
#include "input/caret/field_reading.h"
#include "platform/drawing/font_metrics.h"
#include "platform/system/system_log.h"

namespace nimbletype {

// Finds a field's caret on screen: by the boxes of characters, through text markers, and where both fail by
// measuring the field's text. Says in the log, once for each field, which of the later means it took.
class CaretFinder {
 public:
  CaretFinder(const FontMetrics& fonts, SystemLog& log) : fonts_(fonts), log_(log) {}

  struct Field {
    const AXElement& element;
    const FieldState& state;
    const FieldText& text;
    std::string key;   // its `fieldKey`
    std::string name;  // for the log
  };
  std::optional<CaretPlace> find(const Field& field);

 private:
  struct RememberedFont {
    std::string fieldKey;
    double size = 0;
    std::optional<std::string> name;
  };
  void learnFont(const Field& field);
  FontSpec fontOf(const Field& field) const;
  std::optional<CaretPlace> throughCharacters(const Field& field);
  std::optional<CaretPlace> amongDirections(const Field& field);
  std::optional<CaretPlace> throughTextMarkers(const Field& field);
  std::optional<CaretPlace> estimated(const Field& field);
  void tellOnce(const Field& field, const std::string& diagnosis);

  const FontMetrics& fonts_;
  SystemLog& log_;
  std::optional<RememberedFont> rememberedFont_;
  std::set<std::pair<std::string, std::string>> told_;  // field and diagnosis
};

}  // namespace nimbletype
