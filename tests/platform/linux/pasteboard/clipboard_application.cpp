#include "tests/platform/linux/pasteboard/clipboard_application.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QProcessEnvironment>
#include <QTimer>
#include <chrono>
#include <csignal>
#include <sstream>

namespace nimbletype {
namespace {

ClipboardApplication::Formats formatsIn(const std::string& answer) {
  ClipboardApplication::Formats formats;
  std::istringstream words(answer);
  for (std::string word; words >> word;) {
    const std::size_t equals = word.find('=');
    formats[word.substr(0, equals)] = QByteArray::fromHex(word.substr(equals + 1).c_str()).toStdString();
  }
  return formats;
}

}  // namespace

bool runQtUntil(const std::function<bool()>& condition) {
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
  while (!condition()) {
    if (std::chrono::steady_clock::now() > deadline) return false;
    QTimer::singleShot(2, [] {});
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  }
  return true;
}

ClipboardApplication::ClipboardApplication(const std::string& display) {
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  if (!display.empty()) environment.insert("DISPLAY", QString::fromStdString(display));
  environment.insert("QT_QPA_PLATFORM", "xcb");
  process_.setProcessEnvironment(environment);
  process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
  process_.start(QCoreApplication::applicationDirPath() + "/clipboard_peer", QStringList());
}

ClipboardApplication::~ClipboardApplication() {
  hang(false);
  process_.closeWriteChannel();
  if (!process_.waitForFinished(2000)) process_.kill();
  process_.waitForFinished();
}

void ClipboardApplication::hang(bool hangs) {
  if (process_.processId() > 0) kill(static_cast<pid_t>(process_.processId()), hangs ? SIGSTOP : SIGCONT);
}

std::string ClipboardApplication::command(const std::string& line) {
  process_.write((line + "\n").c_str());
  EXPECT_TRUE(runQtUntil([&] { return process_.canReadLine(); }))
      << "waited 20 s for the other application to " << line.substr(0, 60);
  return process_.readLine().trimmed().toStdString();
}

void ClipboardApplication::copy(const Formats& formats) {
  std::string line = "copy";
  for (const auto& [format, data] : formats) {
    const bool onlyX = data.find_first_not_of('x') == std::string::npos && !data.empty();
    line +=
        " " + format + "=" +
        (onlyX ? "*" + std::to_string(data.size()) : QByteArray::fromStdString(data).toHex().toStdString());
  }
  EXPECT_EQ(command(line), "copied");
}

std::string ClipboardApplication::commandWithoutMainLoop(const std::string& line) {
  process_.write((line + "\n").c_str());
  while (!process_.canReadLine() && process_.waitForReadyRead(20'000)) {
  }
  EXPECT_TRUE(process_.canReadLine()) << "waited 20 s for the other application to " << line;
  return process_.readLine().trimmed().toStdString();
}

ClipboardApplication::Formats ClipboardApplication::paste() {
  return formatsIn(command("paste"));
}

ClipboardApplication::Formats ClipboardApplication::pasteBesideABusyMainLoop() {
  return formatsIn(commandWithoutMainLoop("paste"));
}

}  // namespace nimbletype
