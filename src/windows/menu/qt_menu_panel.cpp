#include "windows/menu/qt_menu_panel.h"

#include <QCursor>
#include <QFrame>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QPainterPath>
#include <QPropertyAnimation>
#include <QScreen>
#include <QTimer>
#include <QVBoxLayout>
#include <QWindow>
#include <utility>

#include "platform/system/desktop_kind.h"
#include "windows/kit/look.h"
#include "windows/kit/placing.h"
#include "windows/menu/menu_rows.h"

namespace nimbletype {
namespace {

constexpr int smallestWidth = 264;
// A tray may hold the pointer and the keyboard until its button is let go.
constexpr int grabInterval = 50, grabTries = 20;

// A popup of macOS never gets the keyboard, one of X11 takes it by itself.
constexpr Qt::WindowFlags kind = onMac ? Qt::Tool | Qt::WindowStaysOnTopHint : Qt::WindowFlags(Qt::Popup);

// What stands above the choices, where the keyboard does not lead, for those who hear it.
QString sentencesIn(const MenuContent& content) {
  QStringList sentences;
  for (const auto& group : content.groups)
    for (const MenuRow& row : group)
      if (row.action == MenuAction::none)
        sentences << QString::fromStdString(row.text + ' ' + row.note).trimmed();
  return sentences.join(QStringLiteral(". "));
}

}  // namespace

class QtMenuPanel::Window final : public QFrame {
 public:
  explicit Window(QtMenuPanel& owner)
      : QFrame(nullptr, kind | Qt::FramelessWindowHint | Qt::NoDropShadowWindowHint), owner_(owner) {
    setWindowTitle("Nimbletype");
    setAccessibleName("Nimbletype");
    setAttribute(Qt::WA_TranslucentBackground);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSizeConstraint(QLayout::SetNoConstraint);  // the rows that went had other sizes
    fade_.setTargetObject(this);
    fade_.setPropertyName("windowOpacity");
    fade_.setDuration(longestMotion);
    fade_.setStartValue(0.0);
    fade_.setEndValue(1.0);
  }

  void fill(const MenuContent& content) {
    if (rows_ && (content == content_ || rows_->advance(content))) {
      content_ = content;
      return;
    }
    if (rows_ && isVisible() && rows_->isPressed()) {
      later_ = content;
      return;
    }
    later_.reset();
    const MenuAction focused = rows_ ? rows_->focused() : MenuAction::none;
    content_ = content;
    setAccessibleDescription(sentencesIn(content));
    if (rows_) {
      rows_->hide();
      layout()->removeWidget(rows_);
      rows_->deleteLater();
    }
    rows_ = new MenuRows(
        content, [this](MenuAction action) { choose(action); }, this);
    layout()->addWidget(rows_);
    if (!isVisible()) return;
    moveInto(anchor_);
    rows_->show();
    rows_->focusOn(focused);
  }

  void openAt(const QRect& item, bool fades, bool isMixed) {
    isMixed_ = isMixed;
    later_.reset();
    ensurePolished();
    moveInto(item);
    isOurs_ = false;
    fade_.stop();
    setWindowOpacity(fades ? 0.0 : 1.0);
    show();
    // A popup of X11 that has been activated would close when the keyboard is taken back.
    if (onMac) {
      owner_.desktop_.activate();
      activateWindow();
    }
    if (fades) fade_.start();
    setFocus(Qt::PopupFocusReason);
    grabSoon(grabTries);
  }

  void closeOurselves() {
    isOurs_ = true;
    hide();
  }

 protected:
  // Without a compositor the corners are cut off.
  void resizeEvent(QResizeEvent* event) override {
    QFrame::resizeEvent(event);
    QPainterPath outline;
    outline.addRoundedRect(rect(), cardRadius, cardRadius);
    if (!isMixed_) setMask(outline.toFillPolygon().toPolygon());
  }

  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(currentLook().line);
    painter.setBrush(currentLook().card);
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), cardRadius, cardRadius);
  }

  void keyPressEvent(QKeyEvent* event) override {
    switch (event->key()) {
      case Qt::Key_Escape:
        return hide();
      case Qt::Key_Down:
        return rows_->moveFocus(1);
      case Qt::Key_Up:
        return rows_->moveFocus(-1);
      case Qt::Key_Return:
      case Qt::Key_Enter:
        if (auto* button = dynamic_cast<QAbstractButton*>(focusWidget())) button->click();
        return;
      default:
        if (!rows_->press(QKeySequence(event->keyCombination()))) QFrame::keyPressEvent(event);
    }
  }

  void hideEvent(QHideEvent* event) override {
    QFrame::hideEvent(event);
    owner_.desktop_.giveBack();
    if (!isOurs_ && owner_.dismissed_) owner_.dismissed_();
  }

  bool event(QEvent* event) override {
    if (onMac && event->type() == QEvent::WindowDeactivate && isVisible()) hide();
    return QFrame::event(event);
  }

 private:
  void choose(MenuAction action) {
    owner_.chosen_(action);
    if (const auto content = std::exchange(later_, std::nullopt)) fill(*content);
  }

  void moveInto(const QRect& item) {
    anchor_ = item;
    const QScreen* screen = QGuiApplication::screenAt(item.center());
    if (!screen) screen = QGuiApplication::primaryScreen();
    const QSize size = rows_->fittingSize(smallestWidth);
    setGeometry({panelPlace(size, item, screen->availableGeometry(), isRightToLeft()), size});
  }

  void grabSoon(int tries) {
    if (tries == 0 || !isVisible() || QGuiApplication::platformName() != "xcb") return;
    QWindow* window = windowHandle();
    const bool keyboard = window->setKeyboardGrabEnabled(true), pointer = window->setMouseGrabEnabled(true);
    if (!keyboard || !pointer) QTimer::singleShot(grabInterval, this, [this, tries] { grabSoon(tries - 1); });
  }

  QtMenuPanel& owner_;
  MenuContent content_;
  std::optional<MenuContent> later_;  // came while a row was held down
  MenuRows* rows_ = nullptr;          // a child
  QPropertyAnimation fade_;
  QRect anchor_;
  bool isOurs_ = false;  // it is we who close it
  bool isMixed_ = true;
};

QtMenuPanel::QtMenuPanel(const SystemSettings& settings, WindowDesktop desktop)
    : settings_(settings), desktop_(std::move(desktop)) {}
QtMenuPanel::~QtMenuPanel() = default;

void QtMenuPanel::open(const MenuContent& content, const std::optional<BottomLeftRect>& item) {
  if (!window_) window_ = std::make_unique<Window>(*this);
  window_->fill(content);
  window_->openAt(item ? toWindowSpace(*item) : QRect(QCursor::pos(), QSize(1, 1)),
                  !settings_.reducesMotion(), desktop_.mixesWindows());
}

void QtMenuPanel::update(const MenuContent& content) {
  if (window_) window_->fill(content);
}

void QtMenuPanel::close() {
  if (window_) window_->closeOurselves();
}

bool QtMenuPanel::isOpen() const {
  return window_ && window_->isVisible();
}

}  // namespace nimbletype
