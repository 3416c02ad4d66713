#include "windows/playground/practice_text.h"

#include <QFontInfo>
#include <QScrollBar>
#include <QTextBlock>
#include <algorithm>

#include "windows/kit/placing.h"

namespace nimbletype {

PracticeText::PracticeText(QWidget* parent) : QPlainTextEdit(parent) {
  setTabChangesFocus(true);
  const auto tell = [this] {
    if (listener_.changed) listener_.changed();
  };
  connect(this, &QPlainTextEdit::cursorPositionChanged, this, tell);
  connect(this, &QPlainTextEdit::selectionChanged, this, tell);
  connect(this, &QPlainTextEdit::textChanged, this, tell);
  connect(verticalScrollBar(), &QScrollBar::valueChanged, this, tell);
}

TopLeftRect PracticeText::onScreen(const QRect& inViewport) const {
  return fromWindowSpace(QRectF(viewport()->mapToGlobal(inViewport.topLeft()), inViewport.size()), *screen());
}

LocalFieldState PracticeText::state() const {
  const QTextCursor cursor = textCursor();
  const QFontInfo info(font());
  LocalFieldState state;
  state.text = toPlainText().toStdU16String();
  state.selection = {cursor.selectionStart(), cursor.selectionEnd() - cursor.selectionStart()};
  state.caretRect = onScreen(cursorRect(cursor));
  const QRect text = viewport()->rect().adjusted(qRound(document()->documentMargin()), 0,
                                                 -qRound(document()->documentMargin()), 0);
  state.lineStartX = isRightToLeft() ? onScreen(text).right() : onScreen(text).x;
  state.frame = onScreen(viewport()->rect());
  const QRectF letter(mapToGlobal(QPoint()), QSizeF(1, info.pixelSize()));
  const double pixels = fromWindowSpace(letter, *screen()).height;
  state.font = {.name = info.family().toStdString(), .size = pixels};
  state.windowTitle = window()->windowTitle().toStdString();
  return state;
}

void PracticeText::replaceSelection(const std::string& text) {
  textCursor().insertText(QString::fromStdString(text));
  ensureCursorVisible();
}

void PracticeText::deleteBackwards(int count) {
  QTextCursor cursor = textCursor();
  cursor.clearSelection();
  cursor.movePosition(QTextCursor::PreviousCharacter, QTextCursor::KeepAnchor, count);
  cursor.removeSelectedText();
}

void PracticeText::resizeEvent(QResizeEvent* event) {
  QPlainTextEdit::resizeEvent(event);
  if (listener_.changed) listener_.changed();
}

void PracticeText::focusInEvent(QFocusEvent* event) {
  QPlainTextEdit::focusInEvent(event);
  if (listener_.focused) listener_.focused(true);
}

void PracticeText::focusOutEvent(QFocusEvent* event) {
  QPlainTextEdit::focusOutEvent(event);
  if (listener_.focused) listener_.focused(false);
}

}  // namespace nimbletype
