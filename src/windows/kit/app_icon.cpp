#include "windows/kit/app_icon.h"

#include <QFileIconProvider>
#include <QFileInfo>
#include <QIcon>

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
  return iconNamed(QString::fromStdString(icon)).pixmap(QSize(size, size), devicePixelRatio);
}

}  // namespace nimbletype
