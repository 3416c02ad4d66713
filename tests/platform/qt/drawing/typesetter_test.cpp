#include "platform/qt/drawing/qt_typesetter.h"

#include <gtest/gtest.h>

#include <QFontMetricsF>
#include <cmath>

#include "platform/qt/drawing/qt_font_metrics.h"

namespace nimbletype {
namespace {

constexpr double sizes[] = {10.6667, 12, 13.3333, 14.6667, 16, 21.3333};

std::vector<double> starts(const SetText& text) {
  std::vector<double> all;
  for (const QGlyphRun& run : text.runs)
    for (const QPointF& place : run.positions()) {
      EXPECT_EQ(place.y(), 0);
      all.push_back(place.x());
    }
  return all;
}

TEST(QtTypesetter, WholeAdvancesPutEveryGlyphOnAPixelAtTheExactSize) {
  QtTypesetter typesetter;
  for (double size : sizes) {
    const FontSpec font{.name = "DejaVu Sans", .size = size, .wholeAdvances = true};
    const SetText text = typesetter.set(font, "AVATAR, \u201cquick\u201d \u2192 fix");
    for (double x : starts(text)) EXPECT_EQ(x, std::round(x)) << size;
    EXPECT_EQ(text.width, std::round(text.width)) << size;
    for (const QGlyphRun& run : text.runs) EXPECT_NEAR(run.rawFont().pixelSize(), size, 0.01);
    EXPECT_GT(typesetter.width(font, "a "), typesetter.width(font, "a")) << size;
  }
}

TEST(QtTypesetter, FractionalAdvancesAreQtsOwn) {
  QtTypesetter typesetter;
  for (double size : sizes) {
    const FontSpec font{.name = "DejaVu Sans Mono", .size = size};
    QFont own("DejaVu Sans Mono");
    own.setPointSizeF(size * 0.75);  // 96 dots per inch
    EXPECT_NEAR(typesetter.width(font, "The quick brown fox "),
                QFontMetricsF(own).horizontalAdvance("The quick brown fox "), 0.05)
        << size;
    for (double y : starts(typesetter.set(font, "gy"))) EXPECT_GE(y, 0);
  }
}

// Letters that join and marks that stack keep the places that shaping gave them.
TEST(QtTypesetter, ScriptsThatAreShapedAreLeftAlone) {
  QtTypesetter typesetter;
  for (const char* text : {"العربية", "e\u0301\u0323", "हिन्दी", "👩‍👩‍👧"}) {
    const FontSpec natural{.name = "DejaVu Sans", .size = 14};
    FontSpec whole = natural;
    whole.wholeAdvances = true;
    EXPECT_EQ(starts(typesetter.set(whole, text)), starts(typesetter.set(natural, text))) << text;
  }
  EXPECT_EQ(typesetter.width({.name = "", .size = 14}, ""), 0);
}

// Widths are kept by word; glyphs of a line from the right stand within it as those from the left do.
TEST(QtTypesetter, LinesAreAsWideAsTheirWordsInEitherDirection) {
  QtTypesetter typesetter;
  for (const char* text : {"plain words  here ", " מחר בבוקר נפגש", " المدينة القديمة", "שלום abc 12"}) {
    const FontSpec font{.name = "DejaVu Sans", .size = 16};
    const double width = typesetter.width(font, text);
    for (const bool rightToLeft : {false, true}) {
      const SetText set = typesetter.set(font, text, rightToLeft);
      EXPECT_NEAR(set.width, width, 1) << text;
      for (double x : starts(set)) EXPECT_TRUE(x >= -1 && x < width) << text << ' ' << x;
    }
  }
}

TEST(QtTypesetter, LinesWithOtherFontsCharactersAreAsHighAsThose) {
  QtTypesetter typesetter;
  const FontSpec font{.name = "DejaVu Sans Mono", .size = 16};
  const LineMetrics own = typesetter.line(font), mixed = typesetter.lineHolding(font, "a 今日は");
  EXPECT_GE(mixed.ascender, own.ascender);
  EXPECT_LE(mixed.descender, own.descender);
  EXPECT_EQ(typesetter.lineHolding(font, "plain").ascender, own.ascender);
}

TEST(QtFontMetrics, KnowsInstalledAndGenericNames) {
  const QtFontMetrics metrics;
  for (const char* name : {"DejaVu Sans Mono", "Monospace", "Sans", "serif"})
    EXPECT_TRUE(metrics.exists(name)) << name;
  for (const char* name : {"", "No Such Font"}) EXPECT_FALSE(metrics.exists(name)) << name;
  const LineMetrics line = metrics.line({.name = "Monospace", .size = 14});
  EXPECT_GT(line.ascender, 7);
  EXPECT_LT(line.descender, 0);
}

}  // namespace
}  // namespace nimbletype
