#include "download_progress.h"

#include <cmath>

#include "text/format/byte_count.h"

namespace nimbletype::cli {
namespace {

double share(const ModelPhase& phase) {
  return phase.bytesExpected > 0
             ? static_cast<double>(phase.bytesWritten) / static_cast<double>(phase.bytesExpected)
             : 0;
}

std::string bar(double share) {
  constexpr std::size_t width = 24;
  const auto filled = static_cast<std::size_t>(share * width);
  return "[" + std::string(filled, '#') + std::string(width - filled, '.') + "]";
}

// "0:07", "12:34", "1:02:03".
std::string clockText(std::chrono::seconds time) {
  const auto seconds = static_cast<long>(time.count());
  char text[32];
  if (seconds >= 3600)
    std::snprintf(text, sizeof text, "%ld:%02ld:%02ld", seconds / 3600, seconds / 60 % 60, seconds % 60);
  else
    std::snprintf(text, sizeof text, "%ld:%02ld", seconds / 60, seconds % 60);
  return text;
}

}  // namespace

std::string progressLine(const ModelPhase& phase, const TransferRate& rate, MonotonicTime now) {
  char percent[16];
  std::snprintf(percent, sizeof percent, "%3d %%", static_cast<int>(share(phase) * 100));
  std::string line = std::string(percent) + "  " + text::formatByteCount(phase.bytesWritten) + " of " +
                     text::formatByteCount(phase.bytesExpected);
  if (const auto speed = rate.speed(now)) line += "  " + text::formatByteCount(std::llround(*speed)) + "/s";
  if (const auto left = rate.remaining(now, phase.bytesExpected)) line += "  " + clockText(*left) + " left";
  return line;
}

void DownloadProgress::show(const ModelPhase& phase, MonotonicTime now) {
  const bool isNew = phase.state != last_;
  last_ = phase.state;
  if (phase.state == ModelPhase::Case::downloading) {
    rate_.note(now, phase.bytesWritten);
    const auto line = progressLine(phase, rate_, now);
    return isTerminal_ ? showOnTerminal(bar(share(phase)) + " " + line) : showStep(phase, line);
  }
  end();
  if (isNew && phase.state == ModelPhase::Case::checking) std::fputs("Checking the download.\n", stream_);
  std::fflush(stream_);
}

void DownloadProgress::showOnTerminal(const std::string& line) {
  std::fprintf(stream_, "\r%s\033[K", line.c_str());
  std::fflush(stream_);
  isLineOpen_ = true;
}

void DownloadProgress::showStep(const ModelPhase& phase, const std::string& line) {
  const int step = static_cast<int>(share(phase) * 10);
  if (step == step_) return;
  step_ = step;
  std::fprintf(stream_, "%s\n", line.c_str());
  std::fflush(stream_);
}

void DownloadProgress::end() {
  if (isLineOpen_) std::fputc('\n', stream_);
  isLineOpen_ = false;
}

}  // namespace nimbletype::cli
