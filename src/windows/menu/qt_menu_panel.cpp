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

#include "platform/system/desktop_kind.h"
#include "windows/kit/look.h"
#include "windows/kit/placing.h"
#include "windows/menu/menu_rows.h"

namespace nimbletype {
namespace {

constexpr int smallestWidth = 264;
// A tray may hold the pointer and the keyboard until its button is let go.
constexpr int grabInterval = 50, grabTries = 20;

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
      : QFrame(nullptr, Qt::Popup | Qt::FramelessWindowHint | Qt::NoDropShadowWindowHint), owner_(owner) {
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
    if (rows_ && content == content_) return;
    const MenuAction focused = rows_ ? rows_->focused() : MenuAction::none;
    content_ = content;
    setAccessibleDescription(sentencesIn(content));
    delete rows_;
    rows_ = new MenuRows(
        content, [this](MenuAction action) { owner_.chosen_(action); }, this);
    layout()->addWidget(rows_);
    if (!isVisible()) return;
    moveInto(anchor_);
    rows_->show();
    rows_->focusOn(focused);
  }

  void openAt(const QRect& item, bool fades, bool isMixed) {
    isMixed_ = isMixed;
    ensurePolished();
    moveInto(item);
    isOurs_ = false;
    fade_.stop();
    setWindowOpacity(fades ? 0.0 : 1.0);
    show();
    // A popup of X11 has the keyboard as it is; one that has been activated closes when that is taken back.
    if (onMac) activateWindow();
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
    if (!isOurs_ && owner_.dismissed_) owner_.dismissed_();
  }

 private:
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
  MenuRows* rows_ = nullptr;  // a child
  QPropertyAnimation fade_;
  QRect anchor_;
  bool isOurs_ = false;  // it is we who close it
  bool isMixed_ = true;
};

QtMenuPanel::QtMenuPanel(const SystemSettings& settings, std::function<bool()> mixesWindows)
    : settings_(settings), mixesWindows_(std::move(mixesWindows)) {}
QtMenuPanel::~QtMenuPanel() = default;

void QtMenuPanel::open(const MenuContent& content, const std::optional<BottomLeftRect>& item) {
  if (!window_) window_ = std::make_unique<Window>(*this);
  window_->fill(content);
  window_->openAt(item ? toWindowSpace(*item) : QRect(QCursor::pos(), QSize(1, 1)),
                  !settings_.reducesMotion(), mixesWindows_());
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
