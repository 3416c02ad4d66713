#include "windows/playground/playground_window.h"

#include <QKeyEvent>
#include <QLabel>
#include <QVBoxLayout>

#include "input/keys/key_combo_display.h"
#include "windows/kit/look.h"
#include "windows/kit/placing.h"
#include "windows/playground/practice_text.h"

namespace nimbletype {
namespace {

QLabel* makeLabel(const char* role) {
  auto* label = new QLabel;
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(true);
  label->setProperty("role", role);
  return label;
}

QString named(const OptionalKeyCombo& key) {
  return key ? QString::fromStdString(displayName(*key)) : QString();
}

}  // namespace

PlaygroundWindow::PlaygroundWindow(SourceSwitch& source, Preferences& prefs,
                                   const std::string& bundleIdentifier)
    : switch_(source),
      prefs_(prefs),
      text_(new PracticeText),
      keys_(makeLabel("note")),
      field_(*text_, bundleIdentifier) {
  setWindowTitle("Playground");
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(space::huge, space::huge, space::huge, space::huge);
  layout->setSpacing(space::medium);
  auto* title = makeLabel("title");
  title->setText("Try it here");
  auto* sentence = makeLabel("text");
  sentence->setText("Type the beginning of a sentence. The grey text is what might come next.");
  layout->addWidget(title);
  layout->addWidget(sentence);
  layout->addWidget(text_, 1);
  layout->addWidget(keys_);
  text_->setAccessibleName("Try it here");
  text_->setListener(
      {[this](bool focused) { field_.focusChanged(focused); }, [this] { field_.valueChanged(); }});
  switch_.setPracticeField(field_);
  for (AnySetting* setting :
       {static_cast<AnySetting*>(&prefs_.acceptWordKey), static_cast<AnySetting*>(&prefs_.acceptAllKey)})
    observations_.push_back(setting->observe([this] { nameKeys(); }));
  nameKeys();
  resize(560, 340);
}

PlaygroundWindow::~PlaygroundWindow() {
  switch_.takeAway(field_);
}

void PlaygroundWindow::nameKeys() {
  QStringList sentences;
  const QString word = named(prefs_.acceptWordKey.get()), all = named(prefs_.acceptAllKey.get());
  if (!word.isEmpty()) sentences << word + " takes the next word.";
  if (!all.isEmpty()) sentences << all + " takes all of it.";
  keys_->setText((sentences << "Escape hides it.").join(" "));
}

void PlaygroundWindow::present() {
  bringToFront(*this);
  text_->setFocus();
}

void PlaygroundWindow::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape || event->matches(QKeySequence::Close))
    close();
  else
    QWidget::keyPressEvent(event);
}

void PlaygroundWindow::moveEvent(QMoveEvent* event) {
  QWidget::moveEvent(event);
  field_.valueChanged();
}

}  // namespace nimbletype
