#include "tests/platform/linux/pasteboard/clipboard_application.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QProcessEnvironment>
#include <csignal>
#include <sstream>

#include "tools/stage/waiting.h"

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
  waitFor("the other application to " + line.substr(0, 60), [&] { return process_.canReadLine(); });
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

ClipboardApplication::Formats ClipboardApplication::paste() {
  return formatsIn(command("paste"));
}

ClipboardApplication::Formats ClipboardApplication::pasteBesideABusyMainLoop() {
  process_.write("paste\n");
  while (!process_.canReadLine() && process_.waitForReadyRead(20'000)) {
  }
  return formatsIn(process_.readLine().trimmed().toStdString());
}

}  // namespace nimbletype
