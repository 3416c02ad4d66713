#include "windows/kit/rows.h"

#include <QHBoxLayout>
#include <QLabel>

#include "windows/kit/look.h"
#include "windows/kit/switch_button.h"

namespace nimbletype {
namespace {

QLabel* makeLabel(const QString& text, const char* role) {
  auto* label = new QLabel(text);
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(true);
  label->setProperty("role", role);
  return label;
}

}  // namespace

RowCard::RowCard(QWidget* parent) : QFrame(parent), layout_(new QVBoxLayout(this)) {
  setProperty("role", "card");
  layout_->setContentsMargins(0, 0, 0, 0);
  layout_->setSpacing(0);
}

SwitchButton* RowCard::addSwitch(const QString& label, const QString& note,
                                 std::function<void(bool)> toggled) {
  auto* button = new SwitchButton;
  connect(button, &QAbstractButton::toggled, this, std::move(toggled));
  addRow(label, note, button);
  return button;
}

QLabel* RowCard::addRow(const QString& label, const QString& note, QWidget* control) {
  if (layout_->count() > 0) {
    auto* line = new QFrame;
    line->setProperty("role", "line");
    line->setFixedHeight(1);
    layout_->addWidget(line);
  }
  auto* words = new QVBoxLayout;
  words->setSpacing(space::hair / 2);
  QLabel* title = makeLabel(label, "text");
  words->addWidget(title);
  if (!note.isEmpty()) words->addWidget(makeLabel(note, "note"));
  auto* row = new QHBoxLayout;
  row->setContentsMargins(space::large, space::medium, space::large, space::medium);
  row->setSpacing(space::large);
  row->addLayout(words, 1);
  row->addWidget(control, 0, Qt::AlignVCenter);
  layout_->addLayout(row);
  control->setAccessibleName(label);
  control->setAccessibleDescription(note);
  return title;
}

}  // namespace nimbletype
