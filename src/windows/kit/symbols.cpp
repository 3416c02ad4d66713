#include "windows/kit/symbols.h"

#include <QPainter>
#include <QSvgRenderer>
#include <algorithm>
#include <array>

namespace nimbletype {
namespace {

struct Symbol {
  std::string_view name;
  const char* shapes;  // on a field of 24 by 24, in black
};

constexpr const char* pencil =
    R"(<path d="M14.6 3.6l3.8 3.8-8.6 8.6-4.6.9.9-4.6z" fill="none" stroke="#000" stroke-width="1.8"
    stroke-linejoin="round"/><path d="M3 20.6c2.4-2.2 3.6-2.2 4.6-.4s2.4 1.6 4-.2 3-1.6 4.2 0 2.8 1.4 5.2-.6"
    fill="none" stroke="#000" stroke-width="1.8" stroke-linecap="round"/>)";

constexpr std::array symbols{
    Symbol{"pencil.and.scribble", pencil},
    Symbol{"pause.circle.fill",
           R"(<path fill-rule="evenodd" d="M12 2a10 10 0 1 0 0 20 10 10 0 0 0 0-20z
           M8.2 7.5h2.6v9H8.2z M13.2 7.5h2.6v9h-2.6z"/>)"},
    Symbol{"exclamationmark.circle.fill",
           R"(<path fill-rule="evenodd" d="M12 2a10 10 0 1 0 0 20 10 10 0 0 0 0-20z
           M10.7 6.2h2.6l-.4 7.4h-1.8z M12 15.2a1.5 1.5 0 1 1 0 3 1.5 1.5 0 0 1 0-3z"/>)"},
    Symbol{"exclamationmark",
           R"(<path d="M10.2 3h3.6l-.6 11.5h-2.4z M12 17a2 2 0 1 1 0 4 2 2 0 0 1 0-4z"/>)"},
    Symbol{"eye.slash.circle.fill",
           R"(<path fill-rule="evenodd" d="M12 2a10 10 0 1 0 0 20 10 10 0 0 0 0-20z
           M5 12c1.8-3 4.2-4.6 7-4.6s5.2 1.6 7 4.6c-1.8 3-4.2 4.6-7 4.6s-5.2-1.6-7-4.6z
           M6.7 12c1.5 2.1 3.2 3.2 5.3 3.2s3.8-1.1 5.3-3.2c-1.5-2.1-3.2-3.2-5.3-3.2s-3.8 1.1-5.3 3.2z
           M12 10.2a1.8 1.8 0 1 0 0 3.6 1.8 1.8 0 0 0 0-3.6z"/>
           <path d="M6.5 17.5l11-11" stroke="#000" stroke-width="1.6" stroke-linecap="round"/>)"},
    Symbol{"pause.fill", R"(<path d="M6 4.5h4v15H6z M14 4.5h4v15h-4z"/>)"},
    Symbol{"play.fill", R"(<path d="M6.5 4.2l13 7.8-13 7.8z"/>)"},
    Symbol{"gearshape",
           R"(<path fill="none" stroke="#000" stroke-width="1.8" stroke-linejoin="round" d="M10.3 3h3.4l.5 2.6
           1.9 1.1 2.5-.9 1.7 3-2 1.7v2.2l2 1.7-1.7 3-2.5-.9-1.9 1.1-.5 2.6h-3.4l-.5-2.6-1.9-1.1-2.5.9
           -1.7-3 2-1.7v-2.2l-2-1.7 1.7-3 2.5.9 1.9-1.1z"/>
           <circle cx="12" cy="11.8" r="3" fill="none" stroke="#000" stroke-width="1.8"/>)"},
    Symbol{"power",
           R"(<path fill="none" stroke="#000" stroke-width="2" stroke-linecap="round" d="M12 3v8.5
           M7 6.2a8 8 0 1 0 10 0"/>)"},
    Symbol{
        "xmark",
        R"(<path fill="none" stroke="#000" stroke-width="2.2" stroke-linecap="round" d="M6 6l12 12 M18 6L6 18"/>)"},
    Symbol{
        "checkmark",
        R"(<path fill="none" stroke="#000" stroke-width="2.4" stroke-linecap="round" stroke-linejoin="round"
           d="M5 12.5l4.5 4.5L19 7.5"/>)"},
    Symbol{
        "chevron.down",
        R"(<path fill="none" stroke="#000" stroke-width="2.2" stroke-linecap="round" stroke-linejoin="round"
           d="M6 9.5l6 6 6-6"/>)"},
    Symbol{
        "chevron.forward",
        R"(<path fill="none" stroke="#000" stroke-width="2.2" stroke-linecap="round" stroke-linejoin="round"
           d="M9.5 6l6 6-6 6"/>)"}};

const Symbol* find(std::string_view name) {
  const auto found = std::ranges::find(symbols, name, &Symbol::name);
  return found == symbols.end() ? nullptr : &*found;
}

}  // namespace

QPixmap symbol(std::string_view name, int size, const QColor& color, qreal devicePixelRatio) {
  const Symbol* found = find(name);
  if (!found) return {};
  QPixmap picture(QSize(size, size) * devicePixelRatio);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  QSvgRenderer(QByteArray(R"(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 24 24">)") + found->shapes +
               "</svg>")
      .render(&painter);
  painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
  painter.fillRect(picture.rect(), color);
  painter.end();
  picture.setDevicePixelRatio(devicePixelRatio);
  return picture;
}

}  // namespace nimbletype
