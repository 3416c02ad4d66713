#pragma once
#include <functional>
#include <optional>
#include <string>

#include "input/insertion/insertion_target.h"
#include "platform/keys/event_poster.h"
#include "platform/pasteboard/pasteboard.h"
#include "platform/system/main_loop.h"
#include "platform/system/system_log.h"

namespace nimbletype {

// Inserts text by way of the pasteboard and then puts back what the user had there. Text that comes while an
// earlier one is not pasted yet goes along with it or after it, never ahead of it. Main thread only.
class Paster {
 public:
  struct Services {
    Pasteboard& pasteboard;
    EventPoster& poster;
    MainLoop& loop;
    SystemLog& log;
  };
  using Otherwise = std::function<void(const std::string& text, const InsertionTarget& target)>;

  // What cannot be pasted without losing what is on the pasteboard is given to `otherwise`.
  Paster(const Services& services, Otherwise otherwise) : s_(services), otherwise_(std::move(otherwise)) {}
  Paster(const Paster&) = delete;
  Paster& operator=(const Paster&) = delete;

  void paste(std::string_view text, InsertionTarget target);
  // Whether the application has yet to get some of the text.
  bool isBusy() const { return waiting_ || isUnread(); }

 private:
  struct Order {
    std::string text;
    InsertionTarget target;
  };
  void begin();
  void saved(std::optional<SavedPasteboard> original);
  void pasteWaiting();
  bool press(const Order& order);
  void look();
  bool isUnread() const;
  void putBack();

  Services s_;
  Otherwise otherwise_;
  std::optional<Order> waiting_;
  std::optional<SavedPasteboard> original_;  // the user's, while our text stands in its place
  std::optional<MonotonicTime> pastedAt_;
  bool isSaving_ = false;
  Task saving_, look_;
};

}  // namespace nimbletype
