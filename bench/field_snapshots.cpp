// What a snapshot costs after each key press in fields of real applications that hold five paragraphs, and
// what reading the text of their window does to the main loop meanwhile.
//   tools/stage/with_desktop.sh field_snapshots [FIELD...]
#include <QCoreApplication>
#include <algorithm>
#include <cstdio>
#include <string>
#include <utility>
#include <vector>

#include "input/context/window_text_reader.h"
#include "input/insertion/text_injector.h"
#include "input/source/ax_field_source.h"
#include "platform/linux/bus/dbus_batch.h"
#include "platform/linux/desktop/x11_workspace.h"
#include "platform/linux/keys/x11_secure_input.h"
#include "platform/linux/keys/xcb_event_poster.h"
#include "platform/linux/pasteboard/x11_pasteboard.h"
#include "platform/qt/system/qt_main_loop.h"
#include "platform/scripted/drawing/fixed_font_metrics.h"
#include "platform/scripted/system/recording_system_log.h"
#include "tools/stage/scene/key_timing.h"
#include "tools/stage/scene/scene.h"
#include "tools/stage/waiting.h"

namespace nimbletype {
namespace {

using namespace std::chrono_literals;

constexpr int paragraphs = 5, keys = 60;
const std::string sentence =
    "We will meet at the old river bank in the morning and walk along the water to the mill. ";

double millisecondsSince(Clock::time_point start) {
  return millisecondsBetween(start, Clock::now());
}

// A main loop that notes the longest time one of its jobs took.
class TimedLoop final : public MainLoop {
 public:
  explicit TimedLoop(MainLoop& loop) : loop_(loop) {}
  void post(std::function<void()> job) override { loop_.post(std::move(job)); }
  [[nodiscard]] Task after(Milliseconds delay, std::function<void()> job) override {
    return loop_.after(delay, [this, job = std::move(job)] {
      const auto start = Clock::now();
      job();
      longest = std::max(longest, millisecondsSince(start));
    });
  }
  MonotonicTime now() const override { return loop_.now(); }
  WallTime wallNow() const override { return loop_.wallNow(); }

  double longest = 0;

 private:
  MainLoop& loop_;
};

class Bench {
 public:
  explicit Bench(const std::string& field) : name_(field), editor_(field, folder_.path(), windows_) {
    source_.onChange([this](Change) { changed_ = true; });
    source_.start();
    waitFor("a snapshot", [this] { return source_.snapshot().has_value(); });
  }

  void measure() {
    for (int i = 0; i < paragraphs; ++i) {
      if (i > 0 && !editor_.program().holdsOneLine) user_.press(key::returnKey);
      for (const char character : sentence) press(character, 8ms);
    }
    rest(500ms);
    std::vector<double> times, trips;
    for (int i = 0; i < keys; ++i) {
      changed_ = false;
      press("abcdefgh "[i % 9], 0ms);
      waitFor("the key to be told of", [this] { return changed_; });
      const auto trip = DBusBatch::roundTrips();
      const auto start = Clock::now();
      if (!source_.snapshot()) throw GaveUp("the field could not be read");
      times.push_back(millisecondsSince(start));
      trips.push_back(static_cast<double>(DBusBatch::roundTrips() - trip));
      rest(40ms);
    }
    const Spread time = spreadOf(times), trip = spreadOf(trips);
    std::printf("%-18s %6.2f %6.2f %6.2f ms   %2.0f to %2.0f round trips\n", name_.c_str(), time.median,
                time.p90, *std::ranges::max_element(times), trip.median, *std::ranges::max_element(trips));
  }

  void measureWindow() {
    const auto app = workspace_.frontmost();
    if (!app) throw GaveUp("no application in front");
    const AXElement application(ax_, ax_.application(app->processID));
    TimedLoop loop(loop_);
    WindowTextReader reader(loop);
    std::optional<WindowReading> reading;
    const auto start = Clock::now();
    const Task task =
        reader.read(application.element("AXFocusedWindow"), application.element("AXFocusedUIElement"),
                    [&](WindowReading found) { reading = std::move(found); });
    waitFor("the text of the window", [&] { return reading.has_value(); });
    std::printf("%-18s %6.0f ms for the window's text: %zu pieces, at most %.1f ms at a time\n", "",
                millisecondsSince(start), reading->pieces.size() + reading->ofField.size(), loop.longest);
  }

 private:
  void press(char character, std::chrono::milliseconds restAfter) {
    user_.type(std::string_view(&character, 1));
    rest(restAfter);
  }

  std::string name_;
  bool changed_ = false;
  ScratchFolder folder_;
  DesktopWindows windows_;
  UserKeyboard user_;
  Editor editor_;
  QtMainLoop loop_;
  RecordingSystemLog log_;
  FixedFontMetrics fonts_;
  X11SecureInput secureInput_;
  AtspiAccessibility ax_;
  X11Workspace workspace_;
  XcbEventPoster poster_{loop_, nullptr};
  X11Pasteboard pasteboard_{loop_};
  TextInjector injector_{{poster_, ax_, pasteboard_, loop_, log_}};
  AXFieldSource source_{{ax_, workspace_, secureInput_, loop_, log_, fonts_}, injector_};
};

bool run(const std::string& field) {
  try {
    Bench bench(field);
    bench.measure();
    bench.measureWindow();
    return true;
  } catch (const GaveUp& failure) {
    std::printf("%-18s %s\n", field.c_str(), failure.what());
    return false;
  }
}

}  // namespace
}  // namespace nimbletype

int main(int argc, char** argv) {
  QCoreApplication application(argc, argv);
  std::vector<std::string> fields(argv + 1, argv + argc);
  if (fields.empty())
    fields = {"mousepad", "featherpad", "chromium", "chromium-editable", "chromium-article", "writer"};
  std::setvbuf(stdout, nullptr, _IOLBF, 0);
  std::printf("%-18s %6s %6s %6s\n", "snapshot", "median", "90 %", "most");
  bool done = true;
  for (const std::string& field : fields) done = nimbletype::run(field) && done;
  return done ? 0 : 1;
}
