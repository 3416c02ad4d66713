// The overlay's part of a key press: laying a long suggestion out, and painting it.
#include <benchmark/benchmark.h>

#include <QGuiApplication>
#include <QImage>

#include "overlay/ghost/ghost_draw.h"
#include "overlay/ghost/ghost_font.h"
#include "platform/qt/drawing/overlay_painter.h"
#include "platform/qt/drawing/qt_font_metrics.h"
#include "platform/scripted/drawing/fixed_font_metrics.h"

namespace {

using namespace nimbletype;

GhostContent longSuggestion() {
  GhostContent content;
  content.text =
      " for letting me know about the change of plans and I will make sure that everyone on the team hears "
      "of it today";
  content.caretRect = {540, 500, 1, 18};
  content.fieldFrame = {100, 100, 640, 600};
  content.fontSize = 14.6667;
  content.fontName = "Monospace";
  content.hint = true;
  return content;
}

GhostLayout layOut(const GhostContent& content, const FontMetrics& metrics) {
  FontSpec font = fieldFont(content, metrics);
  font.wholeAdvances = true;
  return layoutGhost(content, font, {{0, 0, 1440, 875}, 0}, "tab", metrics);
}

void layoutAlone(benchmark::State& state) {
  const GhostContent content = longSuggestion();
  const FixedFontMetrics metrics;
  for (auto _ : state) benchmark::DoNotOptimize(layOut(content, metrics));
}
BENCHMARK(layoutAlone);

void layoutWithRealFonts(benchmark::State& state) {
  const GhostContent content = longSuggestion();
  const QtFontMetrics metrics;
  for (auto _ : state) benchmark::DoNotOptimize(layOut(content, metrics));
}
BENCHMARK(layoutWithRealFonts);

// Words that were never measured before, as in a new suggestion.
void layoutOfNewWords(benchmark::State& state) {
  GhostContent content = longSuggestion();
  const QtFontMetrics metrics;
  std::uint32_t seed = 1;
  for (auto _ : state) {
    for (char& c : content.text)
      if (c != ' ') c = static_cast<char>('a' + ((seed = seed * 1664525 + 1013904223) >> 24) % 26);
    benchmark::DoNotOptimize(layOut(content, metrics));
  }
}
BENCHMARK(layoutOfNewWords);

void layoutAndPaint(benchmark::State& state) {
  const GhostContent content = longSuggestion();
  const QtFontMetrics metrics;
  QtTypesetter typesetter;
  for (auto _ : state) {
    const GhostLayout layout = layOut(content, metrics);
    const DrawList list = drawGhost(layout, ghostColors(false, false), "tab", metrics);
    QImage image(static_cast<int>(list.frame.width), static_cast<int>(list.frame.height),
                 QImage::Format_ARGB32_Premultiplied);
    paintOverlay(image, list, std::nullopt, typesetter);
    benchmark::DoNotOptimize(image.constBits());
  }
}
BENCHMARK(layoutAndPaint);

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
}
