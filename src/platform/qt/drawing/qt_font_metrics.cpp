#include "platform/qt/drawing/qt_font_metrics.h"

#include <QFontDatabase>
#include <array>

namespace nimbletype {

bool QtFontMetrics::exists(std::string_view name) const {
  const QString family = QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size()));
  if (family.isEmpty()) return false;
  // Names that stand for whatever the user has chosen for them; not every list of families has them.
  static constexpr std::array generic{"sans", "sans-serif", "serif", "monospace", "system-ui", "cursive"};
  for (const char* alias : generic)
    if (family.compare(QLatin1StringView(alias), Qt::CaseInsensitive) == 0) return true;
  return QFontDatabase::hasFamily(family);
}

}  // namespace nimbletype
