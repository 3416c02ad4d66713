#pragma once

namespace nimbletype {

// What the user asked for by hand, which passes the gate of suggestions on demand: asked until the next
// request is scheduled, and served until the text, the selection or the field is another one.
class Demand {
 public:
  void ask() { asked_ = true; }
  void schedule() {
    served_ = asked_;
    asked_ = false;
  }
  // A gate holds, or the user wants it no more.
  void drop() { asked_ = served_ = false; }
  void textChanged() { served_ = served_ && asked_; }

  bool isAsked() const { return asked_; }
  bool holds() const { return asked_ || served_; }

 private:
  bool asked_ = false, served_ = false;
};

}  // namespace nimbletype
