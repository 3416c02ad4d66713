#include <QApplication>

#include "main/face.h"
#include "main/linux_desktop.h"
#include "main/quit_signals.h"
#include "main/quitting.h"

// The application as a user has it who has just asked for the model.
int main(int argc, char** argv) {
  using namespace nimbletype;
  const QApplication application(argc, argv);
  LinuxDesktop desktop(std::nullopt, true);
  AppModel model(withWindows(desktop.ports(), {}, [] { QApplication::quit(); }));
  quitOnSignals();
  model.start();
  model.showFace();
  model.modelStore().startDownload();
  const int status = QApplication::exec();
  quit(model, status);
  return status;
}
