#include <QApplication>
#include <QCloseEvent>
#include <QWidget>
#include <csignal>
#include <string_view>

// A program with a window that does nothing; "--stubborn" makes it stay whatever it is asked.
namespace {

class RivalWindow : public QWidget {
 public:
  explicit RivalWindow(bool stays) : stays_(stays) {
    setAttribute(Qt::WA_ShowWithoutActivating);
    resize(80, 80);
  }

 protected:
  void closeEvent(QCloseEvent* event) override { event->setAccepted(!stays_); }

 private:
  bool stays_;
};

}  // namespace

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  const bool stays = argc > 1 && argv[1] == std::string_view("--stubborn");
  if (stays) std::signal(SIGTERM, SIG_IGN);
  RivalWindow window(stays);
  window.show();
  return QApplication::exec();
}
