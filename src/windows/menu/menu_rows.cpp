#include "windows/menu/menu_rows.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <algorithm>

#include "windows/kit/figure_label.h"
#include "windows/kit/look.h"

namespace nimbletype {
namespace {

using Kind = MenuRow::Kind;

constexpr int wholeProgress = 1000;

QString toQString(const std::string& text) {
  return QString::fromStdString(text);
}

const char* nameOf(Tone tone) {
  switch (tone) {
    case Tone::good:
      return "good";
    case Tone::trouble:
      return "trouble";
    case Tone::paused:
      return "paused";
    default:
      return "plain";
  }
}

QLabel* makeLabel(const std::string& text, const char* role, Tone tone = Tone::plain) {
  auto* label = new QLabel(toQString(text));
  label->setTextFormat(Qt::PlainText);
  label->setProperty("role", role);
  label->setProperty("tone", nameOf(tone));
  return label;
}

QWidget* padded(QLayout* content, int below) {
  auto* box = new QWidget;
  content->setContentsMargins(space::large, 0, space::large, below);
  content->setSpacing(space::hair);
  box->setLayout(content);
  return box;
}

QWidget* alone(QWidget* widget, int below) {
  auto* layout = new QHBoxLayout;
  layout->addWidget(widget);
  return padded(layout, below);
}

// The state is said in words, beside a dot in its colour.
QWidget* statusWidget(const MenuRow& row) {
  auto* layout = new QHBoxLayout;
  auto* dot = makeLabel("●", "status", row.tone);
  dot->setAccessibleName(" ");
  auto* text = makeLabel(row.text, "status", row.tone);
  text->setWordWrap(true);
  layout->addWidget(dot, 0, Qt::AlignTop);
  layout->addSpacing(space::hair);
  layout->addWidget(text, 1);
  return padded(layout, space::hair);
}

QWidget* figureWidget(const MenuRow& row) {
  auto* layout = new QHBoxLayout;
  auto* figure = new FigureLabel(toQString(row.text));
  figure->setProperty("role", "figure");
  layout->addWidget(figure, 0, Qt::AlignBaseline);
  layout->addWidget(makeLabel(row.note, "text"), 1, Qt::AlignBaseline);
  return padded(layout, 0);
}

void showProgress(const MenuRow& row, QLabel& text, QProgressBar& bar) {
  text.setText(toQString(row.note.empty() ? row.text : row.text + " · " + row.note));
  bar.setRange(0, row.note.empty() ? 0 : wholeProgress);
  bar.setValue(static_cast<int>(row.progress * wholeProgress));
  bar.setAccessibleName(toQString(row.text));
  bar.setAccessibleDescription(toQString(row.note));
}

// The same, wherever its progress stands.
MenuContent withoutProgress(MenuContent content) {
  for (auto& group : content.groups)
    for (MenuRow& row : group)
      if (row.kind == Kind::progress) row = {.kind = Kind::progress};
  return content;
}

QFrame* makeLine() {
  auto* line = new QFrame;
  line->setProperty("role", "line");
  line->setFixedHeight(1);
  return line;
}

}  // namespace

MenuRows::MenuRows(const MenuContent& content, std::function<void(MenuAction)> chosen, QWidget* parent)
    : QWidget(parent), content_(content), chosen_(std::move(chosen)) {
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(1, space::medium, 1, space::small);
  layout->setSpacing(0);
  for (const auto& group : content.groups) {
    if (&group != &content.groups.front()) {
      layout->addSpacing(space::small - 2);
      layout->addWidget(makeLine());
      layout->addSpacing(space::small - 2);
    }
    for (const MenuRow& row : group) layout->addWidget(widgetFor(row));
  }
}

QWidget* MenuRows::progressWidget(const MenuRow& row) {
  auto* layout = new QVBoxLayout;
  progressText_ = makeLabel({}, "note");
  progressBar_ = new QProgressBar;
  progressBar_->setTextVisible(false);
  showProgress(row, *progressText_, *progressBar_);
  layout->addWidget(progressText_);
  layout->addWidget(progressBar_);
  return padded(layout, space::hair);
}

bool MenuRows::advance(const MenuContent& content) {
  if (!progressBar_ || withoutProgress(content) != withoutProgress(content_)) return false;
  content_ = content;
  for (const auto& group : content.groups)
    for (const MenuRow& row : group)
      if (row.kind == Kind::progress) showProgress(row, *progressText_, *progressBar_);
  return true;
}

bool MenuRows::isPressed() const {
  return std::ranges::any_of(choices_, [](const Choice& choice) { return choice.button->isDown(); });
}

QAbstractButton* MenuRows::add(QAbstractButton* button, MenuAction action) {
  choices_.push_back({button, action});
  // The choice may take these rows away, which is not to happen while one of them tells of its click.
  connect(
      button, &QAbstractButton::clicked, parentWidget(), [chosen = chosen_, action] { chosen(action); },
      Qt::QueuedConnection);
  return button;
}

QWidget* MenuRows::widgetFor(const MenuRow& row) {
  switch (row.kind) {
    case Kind::status:
      return statusWidget(row);
    case Kind::note: {
      auto* label = makeLabel(row.text, "note", row.tone);
      label->setWordWrap(true);
      return alone(label, space::hair);
    }
    case Kind::progress:
      return progressWidget(row);
    case Kind::figure:
      return figureWidget(row);
    case Kind::button: {
      auto* button = new QPushButton(toQString(row.text));
      button->setProperty("role", "chief");
      return alone(add(button, row.action), space::hair);
    }
    case Kind::entry:
      break;
  }
  return add(new MenuEntry(row), row.action);
}

QSize MenuRows::fittingSize(int smallestWidth) {
  ensurePolished();
  layout()->invalidate();
  layout()->activate();
  const int width = std::max(smallestWidth, layout()->totalSizeHint().width());
  const int height = layout()->totalHeightForWidth(width);
  return {width, height >= 0 ? height : layout()->totalSizeHint().height()};
}

void MenuRows::moveFocus(int step) {
  std::vector<QAbstractButton*> able;
  for (const Choice& choice : choices_)
    if (choice.button->isEnabled()) able.push_back(choice.button);
  if (able.empty()) return;
  const auto count = static_cast<int>(able.size());
  const auto now = static_cast<int>(std::ranges::find(able, focusWidget()) - able.begin());
  const int next = now < count ? (now + step + count) % count : (step > 0 ? 0 : count - 1);
  able[static_cast<std::size_t>(next)]->setFocus(Qt::TabFocusReason);
}

void MenuRows::focusOn(MenuAction action) {
  const auto found = std::ranges::find(choices_, action, &Choice::action);
  if (action != MenuAction::none && found != choices_.end()) found->button->setFocus(Qt::OtherFocusReason);
}

MenuAction MenuRows::focused() const {
  const auto found =
      std::ranges::find_if(choices_, [](const Choice& choice) { return choice.button->hasFocus(); });
  return found == choices_.end() ? MenuAction::none : found->action;
}

bool MenuRows::press(const QKeySequence& keys) {
  for (const Choice& choice : choices_) {
    const auto* entry = dynamic_cast<const MenuEntry*>(choice.button);
    if (!entry || entry->shortcutKeys().isEmpty() || entry->shortcutKeys() != keys) continue;
    chosen_(choice.action);
    return true;
  }
  return false;
}

}  // namespace nimbletype
