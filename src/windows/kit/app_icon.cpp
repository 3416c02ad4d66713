#include "windows/kit/app_icon.h"

#include <QApplication>
#include <QFileIconProvider>
#include <QFileInfo>
#include <QIcon>
#include <QStyle>

namespace nimbletype {
namespace {

QIcon iconNamed(const QString& name) {
  if (name.isEmpty()) return {};
  const QFileInfo file(name);
  if (file.isDir()) return QFileIconProvider().icon(file);
  return file.isAbsolute() ? QIcon(name) : QIcon::fromTheme(name);
}

}  // namespace

QPixmap appIcon(const std::string& icon, int size, qreal devicePixelRatio) {
  QPixmap picture = iconNamed(QString::fromStdString(icon)).pixmap(QSize(size, size), devicePixelRatio);
  if (!picture.isNull()) return picture;
  const QIcon plain = QIcon::fromTheme("application-x-executable",
                                       QApplication::style()->standardIcon(QStyle::SP_DesktopIcon));
  return plain.pixmap(QSize(size, size), devicePixelRatio);
}

}  // namespace nimbletype
