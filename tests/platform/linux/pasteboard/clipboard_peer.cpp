// Another application that copies and pastes what it is told on standard input, a command a line:
//   copy FORMAT=HEX ...   takes the clipboard with these formats, or empties it; answers "copied".
//   FORMAT=*SIZE stands
//                         for that many x
//   paste                 answers with all there is, as FORMAT=HEX ...
#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QSocketNotifier>
#include <QTimer>
#include <cstdio>
#include <iostream>
#include <string>

#include "platform/linux/x11/xcb_support.h"

namespace {

void answer(const QByteArray& line) {
  std::fwrite(line.constData(), 1, static_cast<std::size_t>(line.size()), stdout);
  std::fputc('\n', stdout);
  std::fflush(stdout);
}

QByteArray dataFrom(const QByteArray& word) {
  return word.startsWith('*') ? QByteArray(word.mid(1).toLongLong(), 'x') : QByteArray::fromHex(word);
}

// Qt itself takes a claim that was refused for granted.
bool ownsClipboard() {
  xcb_connection_t* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>()->connection();
  const auto cookie = xcb_get_selection_owner(x11, nimbletype::atomNamed(x11, "CLIPBOARD"));
  const nimbletype::XcbReply<xcb_get_selection_owner_reply_t> reply(
      xcb_get_selection_owner_reply(x11, cookie, nullptr));
  const xcb_setup_t* setup = xcb_get_setup(x11);
  return reply && (reply->owner & ~setup->resource_id_mask) == setup->resource_id_base;
}

// Without a key press Qt claims the clipboard as of the last event it has seen, which may be too early.
void copy(const QList<QByteArray>& formats) {
  QClipboard* clipboard = QGuiApplication::clipboard();
  if (formats.isEmpty()) {
    clipboard->clear();
    return answer("copied");
  }
  auto* data = new QMimeData;
  for (const QByteArray& format : formats) {
    const qsizetype equals = format.indexOf('=');
    data->setData(QString::fromLatin1(format.left(equals)), dataFrom(format.mid(equals + 1)));
  }
  clipboard->setMimeData(data);
  if (ownsClipboard()) return answer("copied");
  QTimer::singleShot(5, [formats] { copy(formats); });
}

void paste() {
  const QMimeData* data = QGuiApplication::clipboard()->mimeData();
  QByteArray line;
  for (const QString& format : data->formats())
    line += format.toLatin1() + '=' + data->data(format).toHex() + ' ';
  answer(line);
}

void obey(const std::string& line) {
  QList<QByteArray> words = QByteArray::fromStdString(line).split(' ');
  const QByteArray command = words.takeFirst();
  words.removeAll(QByteArray());
  command == "copy" ? copy(words) : paste();
}

}  // namespace

int main(int argc, char** argv) {
  QGuiApplication application(argc, argv);
  QSocketNotifier input(0, QSocketNotifier::Read);
  QObject::connect(&input, &QSocketNotifier::activated, [] {
    std::string line;
    if (!std::getline(std::cin, line)) return QCoreApplication::quit();
    obey(line);
  });
  return QGuiApplication::exec();
}
