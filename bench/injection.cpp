// How long a text takes into a real editor, by each way there is: from the call until the field's own text
// has it.
//   tools/stage/with_desktop.sh injection [EDITOR [ROUNDS]]
#include <unistd.h>

#include <QCoreApplication>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <utility>

#include "bench/spread.h"
#include "input/insertion/text_injector.h"
#include "input/source/ax_field_source.h"
#include "platform/linux/accessibility/atspi_accessibility.h"
#include "platform/linux/desktop/x11_workspace.h"
#include "platform/linux/keys/x11_secure_input.h"
#include "platform/linux/keys/xcb_event_poster.h"
#include "platform/linux/pasteboard/x11_pasteboard.h"
#include "platform/qt/system/qt_main_loop.h"
#include "platform/scripted/drawing/fixed_font_metrics.h"
#include "platform/scripted/system/recording_system_log.h"
#include "text/text.h"
#include "tools/stage/desktop_session.h"
#include "tools/stage/waiting.h"

namespace nimbletype {
namespace {

std::string repeated(std::string_view unit, std::size_t characters) {
  std::string text;
  while (text::characterCount(text) < characters) text += unit;
  return std::string(text::firstCharacters(text, characters));
}

class Bench {
 public:
  explicit Bench(const std::string& editor) : editor_({editor, emptyFile()}) {
    source_.onChange([this](Change) { changed_ = true; });
    source_.start();
  }

  bool isReady() {
    return comesTrue([&] { return source_.snapshot().has_value(); });
  }

  bool measure(const char* name, const std::string& text, int rounds,
               const std::function<void(const std::string&)>& insert) {
    Spread spread;
    for (int round = 0; round < rounds; ++round) {
      if (!clear()) return std::fprintf(stderr, "%s: the field could not be emptied\n", name), false;
      const auto start = std::chrono::steady_clock::now();
      insert(text);
      if (!await(text)) return std::fprintf(stderr, "%s: the text did not come\n", name), false;
      spread.add(std::chrono::steady_clock::now() - start);
    }
    spread.print(name);
    return true;
  }

  void byKeys(const std::string& text) {
    poster_.begin();
    for (const std::u16string& chunk : splitForTyping(text).chunks) poster_.type(chunk);
    poster_.end();
  }
  void by(const std::string& text, InsertionMethod method) { source_.insert(text, method); }

 private:
  static std::string emptyFile() {
    const auto path =
        std::filesystem::temp_directory_path() / ("injection" + std::to_string(getpid()) + ".txt");
    std::ofstream{path};
    return path;
  }
  std::string before() {
    const auto snapshot = source_.snapshot();
    return snapshot ? snapshot->before : "?";
  }
  bool await(const std::string& text) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    // As the application does, it looks when told of a change: an editor that is asked while it waits for the
    // clipboard does not answer.
    do {
      while (!std::exchange(changed_, false)) {
        if (std::chrono::steady_clock::now() > deadline) return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents);
      }
    } while (before() != text);
    return true;
  }
  // Long enough ago for keys and clipboard to have come to rest.
  bool clear() {
    rest(Milliseconds(700));
    const AttributeRead focus{"AXFocusedUIElement", {}};
    const auto app = workspace_.frontmost();
    if (!app) return false;
    const auto values = ax_.read(ax_.application(app->processID), std::span(&focus, 1));
    const auto* field = std::get_if<ObjectRef>(&values.front());
    if (!field) return false;
    const auto length = static_cast<std::int64_t>(text::utf16Length(before()));
    return ax_.write(*field, "AXSelectedTextRange", TextRange{0, length}) &&
           ax_.write(*field, "AXSelectedText", std::string()) && (length == 0 || await(""));
  }

  bool changed_ = false;
  DesktopProgram editor_;
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

}  // namespace
}  // namespace nimbletype

int main(int argc, char** argv) {
  using namespace nimbletype;
  QCoreApplication application(argc, argv);
  const int rounds = argc > 2 ? std::atoi(argv[2]) : 15;
  Bench bench(argc > 1 ? argv[1] : "mousepad");
  if (!bench.isReady()) return std::fprintf(stderr, "no field to write to; see the head of the source\n"), 1;

  const std::string plain = repeated("the quick brown fox ", 200),
                    foreign = repeated("naïve “日本語” 👍🏽 ", 200);
  const auto keys = [&](const std::string& text) { bench.byKeys(text); };
  const auto by = [&](InsertionMethod method) {
    return [&bench, method](const std::string& text) { bench.by(text, method); };
  };
  Spread::printHead("characters in the field, ms");
  const bool done =
      bench.measure("keys: 20 of the layout", plain.substr(0, 20), rounds, keys) &&
      bench.measure("keys: 80 of the layout", plain.substr(0, 80), rounds, keys) &&
      bench.measure("keys: 200 of the layout", plain, rounds, keys) &&
      bench.measure("Accessibility: 200 of the layout", plain, rounds, by(InsertionMethod::accessibility)) &&
      bench.measure("Accessibility: 200 others", foreign, rounds, by(InsertionMethod::accessibility)) &&
      bench.measure("paste: 200 of the layout", plain, rounds, by(InsertionMethod::paste)) &&
      bench.measure("paste: 200 others", foreign, rounds, by(InsertionMethod::paste)) &&
      bench.measure("typing, as settled for the text: 200 others", foreign, rounds,
                    by(InsertionMethod::typing));
  return done ? 0 : 1;
}
