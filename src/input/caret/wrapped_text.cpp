#include "input/caret/wrapped_text.h"

#include <algorithm>

#include "text/text.h"

namespace nimbletype {
namespace {

constexpr std::string_view blanks = " \t";

class Lines {
 public:
  Lines(double room, const FontSpec& font, const FontMetrics& metrics)
      : room_(room), font_(font), metrics_(metrics) {}

  void addParagraph(std::string_view text) {
    while (!text.empty()) {
      const std::size_t end = std::min(text.find_first_of(blanks), text.size());
      addWord(text.substr(0, end));
      const std::size_t next = std::min(text.find_first_not_of(blanks, end), text.size());
      result_.lastLineWidth += width(text.substr(end, next - end));
      text.remove_prefix(next);
    }
  }
  void breakLine() {
    ++result_.lines;
    result_.lastLineWidth = 0;
  }
  const WrappedText& result() const { return result_; }

 private:
  double width(std::string_view part) const { return part.empty() ? 0 : metrics_.width(font_, part); }

  void addWord(std::string_view word) {
    const double wide = width(word);
    if (wide > room_) return addCharacters(word);
    place(wide);
  }
  void addCharacters(std::string_view word) {
    for (std::string_view character : text::characters(word)) place(width(character));
  }
  void place(double wide) {
    if (result_.lastLineWidth > 0 && result_.lastLineWidth + wide > room_) breakLine();
    result_.lastLineWidth += wide;
  }

  double room_;
  const FontSpec& font_;
  const FontMetrics& metrics_;
  WrappedText result_;
};

}  // namespace

WrappedText wrap(std::string_view text, double room, const FontSpec& font, const FontMetrics& metrics) {
  Lines lines(room, font, metrics);
  for (;;) {
    const std::size_t end = text.find_first_of("\r\n");
    lines.addParagraph(text.substr(0, end));
    if (end == std::string_view::npos) return lines.result();
    lines.breakLine();
    text.remove_prefix(end + (text.substr(end).starts_with("\r\n") ? 2 : 1));
  }
}

}  // namespace nimbletype
