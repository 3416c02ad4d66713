#pragma once
#include <optional>
#include <string>
#include <string_view>

#include "overlay/ghost/ghost_content.h"
#include "platform/drawing/font_metrics.h"

namespace nimbletype {

// What has been typed of a suggestion since it was last drawn; none when it is another one.
std::optional<std::string_view> typedSince(const GhostContent& drawn, const GhostContent& now);

// How far typing these letters moves the caret along its line, in points to the right; none where only the
// application can tell: next to words that run against the line.
std::optional<double> caretAdvance(const GhostContent& drawn, std::string_view typed,
                                   const FontMetrics& metrics);

// Keeps the letters of a suggestion in their places while it is typed over. Applications round the caret's
// place, and some tell of the text before they have moved the caret.
class GhostAdvance {
 public:
  explicit GhostAdvance(const FontMetrics& metrics) : metrics_(metrics) {}

  // The content with the caret where the letters typed since the last one end: a report that differs by no
  // more than rounding is not followed, one that has not moved at all is not believed.
  GhostContent follow(const GhostContent& reported);
  // Nothing is drawn any more.
  void forget() { last_.reset(); }

  // The caret reported last stood still while the text grew: worth asking again a little later.
  bool lagSuspect() const { return last_ && last_->lagging; }
  // It has been asked again and still stands there, so it is right. Only after `follow`.
  const GhostContent& believed();

 private:
  struct Last {
    GhostContent drawn;  // with the caret as it was drawn at
    double reportedX = 0;
    bool lagging = false;
    // Since the suggestion was first drawn: to learn how wide the application sets its text.
    double startX = 0, measured = 0;
  };

  Last advanced(Last now, double advance);
  double scale() const;

  const FontMetrics& metrics_;
  std::optional<Last> last_;
};

}  // namespace nimbletype
