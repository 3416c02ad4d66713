#pragma once
#include <QPlainTextEdit>
#include <functional>

#include "input/field/local_field.h"

namespace nimbletype {

// A text field of our own that suggestions can be tried in.
class PracticeText final : public QPlainTextEdit, public LocalField {
 public:
  struct Listener {
    std::function<void(bool)> focused;
    std::function<void()> changed;  // its text, selection or place
  };
  explicit PracticeText(QWidget* parent = nullptr);
  void setListener(Listener listener) { listener_ = std::move(listener); }

  LocalFieldState state() const override;
  void replaceSelection(const std::string& text) override;
  void deleteBackwards(int count) override;

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  TopLeftRect onScreen(const QRect& inViewport) const;

  Listener listener_;
};

}  // namespace nimbletype
