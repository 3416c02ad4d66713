#include <QCommandLineParser>
#include <QGuiApplication>
#include <QLockFile>
#include <QStandardPaths>
#include <QSurfaceFormat>
#include <QTimer>
#include <cstdio>

#include "main/environment.h"
#include "main/linux_desktop.h"
#include "main/quit_signals.h"
#include "main/quitting.h"
#include "main/stage_trace.h"
#include "platform/linux/x11/x11_display.h"

namespace {

struct Options {
  std::optional<std::string> model;
  bool verbose = false;
};

Options readOptions(const QCoreApplication& app) {
  QCommandLineParser parser;
  parser.setApplicationDescription("Finishes your sentences in any application.");
  parser.addHelpOption();
  parser.addVersionOption();
  const QCommandLineOption model("model", "Use this GGUF file as it is.", "FILE");
  const QCommandLineOption verbose("verbose", "Write diagnostics to standard error.");
  parser.addOption(model);
  parser.addOption(verbose);
  parser.process(app);
  Options options;
  options.model = parser.isSet(model) ? std::optional(parser.value(model).toStdString())
                                      : nimbletype::modelInEnvironment();
  options.verbose = parser.isSet(verbose);
  return options;
}

// One application a display: two would draw over each other and fight for the same keys.
QString lockPath() {
  QString display = qEnvironmentVariable("DISPLAY");
  display.replace('/', '_');
  return QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation) + "/nimbletype-" + display +
         ".lock";
}

// A turn of the loop that ends though nothing happens.
void serveLoop() {
  QTimer::singleShot(20, [] {});
  QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

}  // namespace

int main(int argc, char** argv) {
  // The ghost is to be on screen, or gone, in the frame in which it was decided.
  qputenv("QT_QPA_UPDATE_IDLE_TIME", "0");
  // On a Wayland session the X11 applications can be served all the same.
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "xcb");
  if (!nimbletype::canOpenDisplay()) {
    std::fprintf(stderr,
                 "Nimbletype needs an X11 display and can't open one. Start it from within a desktop.\n");
    return 1;
  }
  QGuiApplication app(argc, argv);
  QGuiApplication::setApplicationName("nimbletype");
  QGuiApplication::setApplicationVersion(NIMBLETYPE_VERSION);
  QGuiApplication::setQuitOnLastWindowClosed(false);
  const Options options = readOptions(app);
  if (QGuiApplication::platformName() != "xcb") {
    std::fprintf(stderr, "Nimbletype needs an X11 display; this one is \"%s\".\n",
                 qPrintable(QGuiApplication::platformName()));
    return 1;
  }
  QLockFile lock(lockPath());
  lock.setStaleLockTime(0);
  if (!lock.tryLock()) {
    std::fprintf(stderr, "Nimbletype is already running on this display.\n");
    return 1;
  }
  nimbletype::LinuxDesktop desktop(options.model, options.verbose);
  nimbletype::AppModel model(desktop.ports());
  std::optional<nimbletype::StageTrace> trace;
  if (const auto path = nimbletype::environment("NIMBLETYPE_TRACE"))
    trace.emplace(path->c_str(), model.engine(), desktop.loop());
  const bool tapRunning = model.start();
  std::printf("Nimbletype is ready%s.\n",
              tapRunning ? "" : ", but the keys that take suggestions are not to be had");
  if (!model.canWrite())
    std::printf("The engine in use cannot write yet; nimbletype-cli doctor tells what to do.\n");
  std::fflush(stdout);
  nimbletype::quitOnSignals();
  const int status = QGuiApplication::exec();
  nimbletype::quit(model, serveLoop);
  return status;
}
