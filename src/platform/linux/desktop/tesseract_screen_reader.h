#pragma once
#include <string>

#include "platform/desktop/screen_reader.h"
#include "platform/system/background_work.h"

namespace nimbletype {

// Has the program `tesseract` read what the screen shows of a window, where that program is installed.
// Pictures go to it through memory alone.
class TesseractScreenReader final : public ScreenReader {
 public:
  explicit TesseractScreenReader(BackgroundWork& background);
  bool isPermitted() override { return !program_.empty(); }
  [[nodiscard]] Task read(const ScreenWindow& window, Handler done) override;

 private:
  BackgroundWork& background_;
  std::string program_;
};

}  // namespace nimbletype
