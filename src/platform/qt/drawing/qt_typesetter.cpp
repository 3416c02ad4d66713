#include "platform/qt/drawing/qt_typesetter.h"

#include <QFontDatabase>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QRawFont>
#include <QTextLayout>
#include <algorithm>
#include <cmath>

namespace nimbletype {
namespace {

constexpr std::size_t mostFaces = 64, mostWords = 4000, longestKept = 80;

std::size_t endOfWord(std::string_view text) {
  const std::size_t blank = std::min(text.find(' '), text.size());
  return std::min(text.find_first_not_of(' ', blank), text.size());
}

// A QFont's size in pixels is a whole number: rounded as Qt rounds the points of its applications.
int wholeSize(double size) {
  constexpr double hundredths = 100;
  return qRound(std::floor(std::max(1.0, size) * hundredths + 0.5) / hundredths);
}

// Where Qt draws its own windows larger it leaves hinting out. Text that other applications draw is hinted
// there as anywhere: slightly, unless a user has chosen otherwise.
QFont::HintingPreference hinting() {
  return qGuiApp->devicePixelRatio() == 1 ? QFont::PreferDefaultHinting : QFont::PreferVerticalHinting;
}

QFont makeFont(const FontSpec& spec) {
  QFont font = spec.name.empty() ? QFontDatabase::systemFont(QFontDatabase::GeneralFont)
                                 : QFont(QString::fromStdString(spec.name));
  font.setPixelSize(wholeSize(spec.size));
  font.setHintingPreference(hinting());
  if (spec.medium) font.setWeight(QFont::Medium);
  return font;
}

LineMetrics measureLine(const QFont& font, const FontSpec& spec) {
  if (!spec.wholeAdvances) {
    const QFontMetricsF metrics(font);
    return {metrics.ascent(), -metrics.descent(), std::max(0.0, metrics.leading())};
  }
  QRawFont exact = QRawFont::fromFont(font);
  exact.setPixelSize(spec.size);
  return {exact.ascent(), -exact.descent(), std::max(0.0, exact.leading())};
}

// Scripts that join letters or stack marks place glyphs by more than their advances.
bool isPlain(const QString& text) {
  return std::ranges::all_of(text, [](QChar c) {
    return c.unicode() < 0x300 || (c.unicode() >= 0x370 && c.unicode() < 0x530) ||
           (c.unicode() >= 0x2010 && c.unicode() < 0x2300 && c.unicode() != 0x2028 && c.unicode() != 0x2029);
  });
}

SetText layOut(const QFont& font, const QString& text, bool rightToLeft) {
  QTextLayout layout(text, font);
  QTextOption option;
  option.setWrapMode(QTextOption::NoWrap);
  option.setTextDirection(rightToLeft ? Qt::RightToLeft : Qt::LeftToRight);
  option.setAlignment(Qt::AlignLeft | Qt::AlignAbsolute);
  option.setFlags(QTextOption::IncludeTrailingSpaces);
  layout.setTextOption(option);
  layout.setCacheEnabled(false);
  layout.beginLayout();
  QTextLine line = layout.createLine();
  layout.endLayout();
  if (!line.isValid()) return {};
  SetText result{layout.glyphRuns(), line.naturalTextWidth()};
  for (QGlyphRun& run : result.runs) {
    auto places = run.positions();
    for (QPointF& place : places) place.ry() -= line.ascent();
    run.setPositions(places);
  }
  return result;
}

double firstX(const QGlyphRun& run) {
  return run.positions().isEmpty() ? 0 : run.positions().first().x();
}

const QRawFont& atSize(std::map<QString, QRawFont>& opened, const QRawFont& font, double size) {
  const auto [found, isNew] = opened.try_emplace(font.familyName() + u'/' + font.styleName(), font);
  if (isNew) found->second.setPixelSize(size);
  return found->second;
}

// The same glyphs at the exact size with whole advances, kerning kept.
void snapToPixels(SetText& text, double size, std::map<QString, QRawFont>& opened) {
  std::ranges::sort(text.runs, {}, firstX);
  double pen = 0;
  for (qsizetype r = 0; r < text.runs.size(); ++r) {
    QGlyphRun& run = text.runs[r];
    const auto places = run.positions();
    const double end = r + 1 < text.runs.size() ? firstX(text.runs[r + 1]) : text.width;
    const QRawFont rounded = run.rawFont();
    const QRawFont& font = atSize(opened, rounded, size);
    const double scale = size / rounded.pixelSize();
    const auto natural = rounded.advancesForGlyphIndexes(run.glyphIndexes());
    const auto exact = font.advancesForGlyphIndexes(run.glyphIndexes());
    QList<QPointF> snapped;
    snapped.reserve(places.size());
    for (qsizetype i = 0; i < places.size(); ++i) {
      const double next = i + 1 < places.size() ? places[i + 1].x() : end;
      const double kerning = (next - places[i].x() - natural[i].x()) * scale;
      snapped.append({pen, 0});
      pen += std::round(std::round(exact[i].x()) + kerning);
    }
    run.setRawFont(font);
    run.setPositions(snapped);
  }
  text.width = pen;
}

}  // namespace

SetText QtTypesetter::set(const FontSpec& font, std::string_view text, bool rightToLeft) {
  return setIn(face(font), font, text, rightToLeft);
}

SetText QtTypesetter::setIn(Face& face, const FontSpec& font, std::string_view text, bool rightToLeft) {
  const QString string = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
  SetText result = layOut(face.font, string, rightToLeft);
  if (font.wholeAdvances && isPlain(string)) snapToPixels(result, font.size, face.exact);
  return result;
}

double QtTypesetter::width(const FontSpec& font, std::string_view text) {
  Face& opened = face(font);
  double sum = 0;
  while (!text.empty()) {
    const std::size_t end = endOfWord(text);
    sum += wordWidth(opened, font, text.substr(0, end));
    text.remove_prefix(end);
  }
  return sum;
}

double QtTypesetter::wordWidth(Face& face, const FontSpec& font, std::string_view word) {
  if (word.size() > longestKept) return setIn(face, font, word, false).width;
  auto& known = face.wordWidths;
  if (const auto found = known.find(word); found != known.end()) return found->second;
  if (known.size() >= mostWords) known.clear();
  return known.emplace(word, setIn(face, font, word, false).width).first->second;
}

LineMetrics QtTypesetter::line(const FontSpec& font) {
  return face(font).line;
}

LineMetrics QtTypesetter::lineHolding(const FontSpec& font, std::string_view text) {
  Face& opened = face(font);
  LineMetrics line = opened.line;
  if (std::ranges::all_of(text, [](char c) { return (c & 0x80) == 0; })) return line;
  const QString string = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
  for (const QGlyphRun& run : layOut(opened.font, string, false).runs) {
    const QRawFont own = run.rawFont();
    const QRawFont& used = font.wholeAdvances ? atSize(opened.exact, own, font.size) : own;
    line.ascender = std::max(line.ascender, used.ascent());
    line.descender = std::min(line.descender, -used.descent());
  }
  return line;
}

QtTypesetter::Face& QtTypesetter::face(const FontSpec& font) {
  const auto key = std::tuple(font.name, font.size, font.medium, font.wholeAdvances);
  if (const auto found = faces_.find(key); found != faces_.end()) return found->second;
  if (faces_.size() >= mostFaces) faces_.clear();
  const QFont made = makeFont(font);
  return faces_.emplace(key, Face{made, measureLine(made, font), {}, {}}).first->second;
}

}  // namespace nimbletype
