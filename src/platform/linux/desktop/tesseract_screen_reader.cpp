#include "platform/linux/desktop/tesseract_screen_reader.h"

#include <memory>
#include <utility>

#include "platform/linux/desktop/tesseract_lines.h"
#include "platform/linux/system/bounded_program.h"
#include "platform/linux/x11/x11_picture.h"

namespace nimbletype {
namespace {

std::vector<PlacedText> recognised(const std::string& program, const TopLeftRect& frame,
                                   const std::atomic<bool>& cancelled) {
  const auto picture = x11PictureOf(frame);
  if (!picture) return {};
  // One thread: it must not take the whole machine.
  const auto table =
      outputOf({"/usr/bin/env", "OMP_THREAD_LIMIT=1", program, "stdin", "stdout", "--dpi", "192", "tsv"},
               picture->pgm, ScreenReader::longestRead, [&] { return cancelled.load(); });
  if (!table) return {};
  return tesseractLines(*table, {picture->x, picture->y, X11Picture::scale});
}

}  // namespace

TesseractScreenReader::TesseractScreenReader(BackgroundWork& background)
    : background_(background), program_(programNamed("tesseract")) {}

Task TesseractScreenReader::read(const ScreenWindow& window, Handler done) {
  const auto lines = std::make_shared<std::vector<PlacedText>>();
  return background_.run(
      [lines, program = program_, frame = window.frame](const std::atomic<bool>& cancelled) {
        *lines = recognised(program, frame, cancelled);
      },
      [lines, done = std::move(done)] { done(std::move(*lines)); });
}

}  // namespace nimbletype
