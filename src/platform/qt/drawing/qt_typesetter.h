#pragma once
#include <QFont>
#include <QGlyphRun>
#include <QList>
#include <QRawFont>
#include <QString>
#include <map>
#include <string_view>
#include <tuple>
#include <unordered_map>

#include "platform/drawing/font_metrics.h"

namespace nimbletype {

// One line of text, set: positions start at zero on the baseline.
struct SetText {
  QList<QGlyphRun> runs;
  double width = 0;
};

// Sets text as the applications of the desktop do, each glyph where they put it. Sizes are pixels of the
// screen, whatever scale Qt draws its own windows at.
// Applications differ: some round a font's size and keep fractions of a pixel in the advances (Qt), some keep
// the size and round every advance (GTK, Chromium); FontSpec::wholeAdvances says which.
class QtTypesetter {
 public:
  SetText set(const FontSpec& font, std::string_view text, bool rightToLeft = false);
  // The sum of its words, each with the blanks after it: suggestions are measured again at every key press.
  double width(const FontSpec& font, std::string_view text);
  LineMetrics line(const FontSpec& font);
  LineMetrics lineHolding(const FontSpec& font, std::string_view text);

 private:
  struct StringHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view s) const { return std::hash<std::string_view>()(s); }
  };
  struct Face {
    QFont font;
    LineMetrics line;
    std::map<QString, QRawFont> exact;  // by the family that has the glyphs: opening one takes long
    std::unordered_map<std::string, double, StringHash, std::equal_to<>> wordWidths;
  };
  Face& face(const FontSpec& font);
  SetText setIn(Face& face, const FontSpec& font, std::string_view text, bool rightToLeft);
  double wordWidth(Face& face, const FontSpec& font, std::string_view word);

  std::map<std::tuple<std::string, double, bool, bool>, Face> faces_;
};

}  // namespace nimbletype
