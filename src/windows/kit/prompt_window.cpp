#include "windows/kit/prompt_window.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>

#include "platform/system/desktop_kind.h"
#include "windows/kit/look.h"
#include "windows/kit/placing.h"
#include "windows/kit/symbols.h"
#include "windows/kit/tick_box.h"

namespace nimbletype {
namespace {

constexpr int pictureSize = 44, textWidth = 430;

// On macOS a window of an application that is not active would open behind the active one's.
constexpr Qt::WindowFlags flags = Qt::Dialog | Qt::WindowTitleHint | Qt::WindowCloseButtonHint |
                                  (onMac ? Qt::WindowStaysOnTopHint : Qt::WindowFlags());

QLabel* makeWords(const char* role) {
  auto* label = new QLabel;
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(true);
  label->setProperty("role", role);
  label->setFixedWidth(textWidth);
  return label;
}

}  // namespace

PromptWindow::PromptWindow(std::string_view symbol, QWidget* parent)
    : QDialog(parent, flags),
      symbol_(symbol),
      picture_(new QLabel),
      title_(makeWords("title")),
      body_(makeWords("text")),
      words_(new QVBoxLayout),
      buttons_(new QHBoxLayout) {
  setWindowTitle("Nimbletype");
  auto* upper = new QHBoxLayout;
  upper->setSpacing(space::large);
  upper->addWidget(picture_, 0, Qt::AlignTop);
  upper->addLayout(words_, 1);
  words_->setSpacing(space::small);
  words_->addWidget(title_);
  words_->addWidget(body_);
  buttons_->setSpacing(space::small);
  buttons_->addStretch(1);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(space::huge, space::huge, space::huge, space::large);
  layout->setSpacing(space::large);
  layout->addLayout(upper, 1);
  layout->addLayout(buttons_);
  drawSymbol();
}

void PromptWindow::setTexts(const QString& title, const QString& body) {
  title_->setText(title);
  body_->setText(body);
  setAccessibleName(title);
  setAccessibleDescription(body);
  fit();
}

// The texts of an open window change.
void PromptWindow::fit() {
  ensurePolished();
  layout()->invalidate();
  layout()->activate();
  resize(layout()->totalSizeHint());
}

void PromptWindow::setPicture(const QPixmap& picture) {
  hasPicture_ = !picture.isNull();
  if (hasPicture_) return picture_->setPixmap(picture);
  drawSymbol();
}

void PromptWindow::drawSymbol() {
  if (hasPicture_) return;
  picture_->setPixmap(symbol(symbol_, pictureSize, currentLook().accent, devicePixelRatioF()));
}

QLabel* PromptWindow::addNote() {
  QLabel* note = makeWords("note");
  words_->addWidget(note);
  return note;
}

QCheckBox* PromptWindow::addCheckBox(const QString& text, std::function<void(bool)> toggled) {
  auto* box = new TickBox(text);
  words_->addSpacing(space::hair);
  words_->addWidget(box);
  connect(box, &QCheckBox::toggled, this, std::move(toggled));
  return box;
}

QPushButton* PromptWindow::addButton(const QString& text, const char* role, std::function<void()> clicked) {
  auto* button = new QPushButton(text);
  button->setProperty("role", role);
  button->setAutoDefault(true);
  // Return is for this one, unless another has the focus.
  button->setDefault(std::string_view(role) == "chief");
  buttons_->addWidget(button);
  connect(button, &QPushButton::clicked, this, std::move(clicked));
  return button;
}

void PromptWindow::present() {
  if (!isVisible()) {
    fit();
    if (auto* last = buttons_->itemAt(buttons_->count() - 1)->widget()) last->setFocus();
  }
  bringToFront(*this, Focus::left);
}

void PromptWindow::keyPressEvent(QKeyEvent* event) {
  if (event->matches(QKeySequence::Close))
    close();
  else
    QDialog::keyPressEvent(event);
}

void PromptWindow::changeEvent(QEvent* event) {
  QDialog::changeEvent(event);
  if (event->type() == QEvent::PaletteChange || event->type() == QEvent::StyleChange) drawSymbol();
}

}  // namespace nimbletype
