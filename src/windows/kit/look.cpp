#include "windows/kit/look.h"

#include <QApplication>
#include <QFontInfo>
#include <QPalette>
#include <QString>

namespace nimbletype {
namespace {

Look& worn() {
  static Look look = lookFor(false);
  return look;
}

QPalette paletteOf(const Look& look) {
  QPalette palette;
  const auto set = [&](QPalette::ColorRole role, const QColor& color) { palette.setColor(role, color); };
  set(QPalette::Window, look.window);
  set(QPalette::Base, look.card);
  set(QPalette::AlternateBase, look.window);
  set(QPalette::Button, look.card);
  set(QPalette::ToolTipBase, look.card);
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText})
    set(role, look.text);
  set(QPalette::PlaceholderText, look.faint);
  set(QPalette::Highlight, look.accent);
  set(QPalette::HighlightedText, look.onAccent);
  set(QPalette::Link, look.accent);
  set(QPalette::Mid, look.line);
  set(QPalette::Light, look.card);
  set(QPalette::Dark, look.line);
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
    palette.setColor(QPalette::Disabled, role, look.faint);
  return palette;
}

// Names in angle brackets stand for the look's colours and sizes.
constexpr const char* sheet = R"(
QWidget { font-size: <text>px; }
QToolTip { color: <ink>; background: <card>; border: 1px solid <line>; padding: 4px; }
QFrame[role="card"] { background: <card>; border: 1px solid <line>; border-radius: 9px; }
QLabel[role="title"] { font-size: <title>px; font-weight: 600; }
QLabel[role="figure"] { font-size: <figure>px; font-weight: 700; }
QLabel[role="note"] { font-size: <note>px; color: <faint>; }
QLabel[role="status"] { font-weight: 600; }
QLabel[tone="good"] { color: <good>; }
QLabel[tone="paused"] { color: <accent>; }
QLabel[tone="trouble"] { color: <trouble>; }
QFrame[role="line"] { background: <line>; border: none; max-height: 1px; }
QPushButton { background: <card>; color: <ink>; border: 1px solid <line>; border-radius: 6px; padding: 5px 14px; }
QPushButton:hover { background: <soft>; }
QPushButton:focus { border: 2px solid <accent>; padding: 4px 13px; }
QPushButton:disabled { color: <faint>; }
QPushButton[role="chief"] { background: <accent>; color: <onAccent>; border: 1px solid <accent>; font-weight: 600; }
QPushButton[role="chief"]:focus { border: 2px solid <ink>; }
QPushButton[role="chief"]:disabled { background: <line>; border-color: <line>; color: <faint>; }
QPushButton[role="plain"] { background: transparent; border-color: transparent; color: <faint>; }
QPushButton[role="danger"] { background: transparent; border-color: transparent; color: <trouble>; }
QPlainTextEdit { background: <card>; border: 1px solid <line>; border-radius: 6px; padding: 4px; }
QPlainTextEdit:focus { border-color: <accent>; }
QProgressBar { background: <line>; border: none; border-radius: 3px; max-height: 6px; }
QProgressBar::chunk { background: <accent>; border-radius: 3px; }
)";

QString styled(const Look& look) {
  const TextSizes sizes = textSizes();
  QString text = QString::fromUtf8(sheet);
  const std::pair<const char*, QString> names[] = {{"<ink>", look.text.name()},
                                                   {"<card>", look.card.name()},
                                                   {"<line>", look.line.name()},
                                                   {"<faint>", look.faint.name()},
                                                   {"<accent>", look.accent.name()},
                                                   {"<onAccent>", look.onAccent.name()},
                                                   {"<soft>", look.accentSoft.name()},
                                                   {"<good>", look.good.name()},
                                                   {"<trouble>", look.trouble.name()},
                                                   {"<text>", QString::number(sizes.text)},
                                                   {"<note>", QString::number(sizes.note)},
                                                   {"<title>", QString::number(sizes.title)},
                                                   {"<figure>", QString::number(sizes.figure)}};
  for (const auto& [name, value] : names) text.replace(QLatin1StringView(name), value);
  return text;
}

}  // namespace

Look lookFor(bool isDark) {
  if (isDark)
    return {true,      "#1e1d1b", "#292724", "#43403b", "#f2f0ec", "#aaa69e",
            "#e3ae4a", "#1e1d1b", "#40341d", "#63bd8b", "#ee8b7d"};
  return {false,     "#f4f3f1", "#ffffff", "#dedbd5", "#1c1b19", "#66635d",
          "#8f5e0a", "#ffffff", "#f6e9cf", "#27734a", "#b0392a"};
}

TextSizes textSizes() {
  // The desktop's size, which a style sheet must not have changed.
  static const int desktop = QFontInfo(QApplication::font()).pixelSize();
  const auto scaled = [](int size) { return qRound(size * desktop / 13.0); };
  return {desktop, scaled(12), scaled(19), scaled(25)};
}

void wear(QApplication& application, const Look& look) {
  textSizes();
  worn() = look;
  QApplication::setPalette(paletteOf(look));
  application.setStyleSheet(styled(look));
}

const Look& currentLook() {
  return worn();
}

}  // namespace nimbletype
