#include <QApplication>
#include <cstdio>

#include "main/arguments.h"
#include "main/environment.h"
#include "main/face.h"
#include "main/linux_desktop.h"
#include "main/quit_signals.h"
#include "main/quitting.h"
#include "main/single_instance.h"
#include "main/stage_trace.h"
#include "platform/linux/x11/x11_display.h"

namespace {

using namespace nimbletype;

int complain(const std::string& sentence, int status) {
  std::fprintf(stderr, "%s\n", sentence.c_str());
  return status;
}

int tell(const std::string& text) {
  std::printf("%s\n", text.c_str());
  return 0;
}

// One application a display: two would draw over each other and fight for the same keys.
QString instanceName() {
  const QString display = qEnvironmentVariable("DISPLAY");  // ":0.1" is a screen of ":0"
  return "nimbletype-" + display.left(display.indexOf('.', display.lastIndexOf(':')));
}

// The application from its start to its end, on a display that nobody else serves.
int run(const Arguments& arguments, SingleInstance& instance) {
  LinuxDesktop desktop(arguments.model ? arguments.model : modelInEnvironment(), arguments.verbose);
  AppModel model(withWindows(desktop.ports(), {.mixesWindows = [&desktop] { return desktop.mixesWindows(); }},
                             [] { QApplication::quit(); }));
  std::optional<StageTrace> trace;
  if (const auto path = environment("NIMBLETYPE_TRACE"))
    trace.emplace(path->c_str(), model.engine(), desktop.loop());
  quitOnSignals();
  const bool tapRunning = model.start();
  tell(std::string("Nimbletype is ready") +
       (tapRunning ? "." : ", but the keys that take suggestions are not to be had."));
  if (!model.canWrite()) tell("The engine in use cannot write yet; nimbletype-cli doctor tells what to do.");
  std::fflush(stdout);
  obey(model.windows(), arguments, false);
  model.showFace();
  instance.onArguments([&model](const std::vector<std::string>& words) {
    if (const auto later = readArguments(words)) obey(model.windows(), *later, true);
  });
  const int status = QApplication::exec();
  instance.close();
  quit(model, status);
  return status;
}

}  // namespace

int main(int argc, char** argv) {
  const std::vector<std::string> words(argv + 1, argv + argc);
  const auto arguments = readArguments(words);
  if (!arguments) return complain(arguments.error(), 2);
  if (arguments->help) return tell(argumentsHelp());
  if (arguments->version) return tell(std::string("nimbletype ") + NIMBLETYPE_VERSION);
  // On a Wayland session the X11 applications can be served all the same.
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "xcb");
  if (!canOpenDisplay())
    return complain("Nimbletype needs an X11 display and can't open one. Start it from within a desktop.", 1);
  QApplication app(argc, argv);
  QApplication::setApplicationName("nimbletype");
  QApplication::setApplicationDisplayName("Nimbletype");
  QApplication::setApplicationVersion(NIMBLETYPE_VERSION);
  QApplication::setDesktopFileName("nimbletype");
  QApplication::setQuitOnLastWindowClosed(false);
  if (QApplication::platformName() != "xcb")
    return complain("Nimbletype needs an X11 display; this one is \"" +
                        QApplication::platformName().toStdString() + "\".",
                    1);
  SingleInstance instance(instanceName());
  if (!instance.isFirst() && instance.handOver(words)) return 0;
  if (instance.isFirst()) return run(*arguments, instance);
  return complain("Nimbletype is already running on this display and doesn't answer.", 1);
}
