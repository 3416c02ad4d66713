#pragma once
#include <QDialog>
#include <functional>
#include <string_view>

class QAbstractButton;
class QBoxLayout;
class QCheckBox;
class QLabel;
class QPushButton;

namespace nimbletype {

// The common look of small windows that tell one thing and ask for one answer: a symbol, a title, a sentence,
// and buttons in a row below. Escape and ⌘W or Ctrl+W close it.
class PromptWindow : public QDialog {
 public:
  explicit PromptWindow(std::string_view symbol, QWidget* parent = nullptr);

  void setTexts(const QString& title, const QString& body);
  // In the place of the symbol, which stays where the picture is empty.
  void setPicture(const QPixmap& picture);
  // Between the sentence and the buttons.
  QLabel* addNote();
  QCheckBox* addCheckBox(const QString& text, std::function<void(bool)> toggled);
  // From the safe answer to the chief one, which comes last and has the focus. `role` as in Look.
  QPushButton* addButton(const QString& text, const char* role, std::function<void()> clicked);

  // Shows it in front of everything. It comes by itself, so that it takes no key press from anybody.
  void present();

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void drawSymbol();
  void fit();

  std::string_view symbol_;
  bool hasPicture_ = false;
  QLabel *picture_, *title_, *body_;  // children
  QBoxLayout *words_, *buttons_;
};

}  // namespace nimbletype
