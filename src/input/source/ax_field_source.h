#pragma once
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "input/field/ax_element.h"
#include "input/field/field_source.h"
#include "input/field/page_and_window.h"
#include "input/field/pinned_field.h"
#include "input/field/web_accessibility.h"
#include "input/insertion/insertion_target.h"
#include "input/source/attach_retry.h"
#include "input/source/field_reader.h"
#include "platform/desktop/workspace.h"
#include "platform/keys/secure_input.h"
#include "platform/system/main_loop.h"
#include "platform/system/observable.h"
#include "platform/system/system_log.h"

namespace nimbletype {

class TextInjector;

// The field source for every application but this one. It follows the frontmost application, notices when its
// focused element, that element's text or selection change, and reads the focused field on request.
class AXFieldSource final : public FieldSource {
 public:
  struct Services {
    Accessibility& accessibility;
    Workspace& workspace;
    const SecureInput& secureInput;
    MainLoop& loop;
    SystemLog& log;
    const FontMetrics& fonts;
  };
  AXFieldSource(const Services& services, TextInjector& injector);
  ~AXFieldSource() override;
  AXFieldSource(const AXFieldSource&) = delete;
  AXFieldSource& operator=(const AXFieldSource&) = delete;

  // Follows the frontmost application from now on.
  void start();
  const Observable<std::optional<RunningApp>>& frontApp() const { return front_; }

  // Makes the element that the application reports as focused, or any other of its elements, the field of
  // that application, whatever it says of its focus later; false when there is no such element. One field at
  // a time.
  bool pinFocused();
  bool pin(ObjectRef element);
  void unpin();
  bool isPinned() const { return app() && pinned_.isFor(app()->processID); }

  std::optional<FieldSnapshot> snapshot() override;
  std::optional<std::string> whyNoField() const override { return whyNoField_; }
  void onChange(std::function<void(Change)> changed) override { onChange_ = std::move(changed); }
  void insert(const std::string& text, InsertionMethod method) override;
  void deleteBackwards(int count) override;

 private:
  const std::optional<RunningApp>& app() const { return front_.get(); }

  // What the last snapshot was read from: accepted text belongs there and nowhere else.
  struct Origin {
    std::int64_t processID = 0;
    AXElement element;
  };

  void frontmostChanged();
  void attach();
  bool tryToAttach();
  void notified(std::string_view name);
  AXElement focusedElement();
  AXElement fieldElement();
  void pollPinned();
  std::optional<InsertionTarget> insertionTarget(const std::optional<Origin>& origin);
  void watch(const AXElement& element);

  void soon(std::function<void()> change);
  void insertNow(const std::string& text, InsertionMethod method, const std::optional<Origin>& origin);
  void emitSoon(Change change);
  void emitNow();
  void tell();
  void lookForAFieldAgain();
  void followScrolling(const FieldSnapshot& snapshot);
  bool mayComeBack();

  Services s_;
  TextInjector& injector_;
  std::function<void(Change)> onChange_;

  Observable<std::optional<RunningApp>> front_;
  AXElement appElement_;
  std::optional<Task> observer_;
  AXElement watched_;
  std::optional<Task> watching_;
  std::optional<Origin> origin_;
  std::optional<PageAndWindow> focusInfo_;  // of the watched element
  WebAccessibility webAccessibility_;
  std::optional<std::string> whyNoField_;
  AttachRetry attachRetry_;
  FieldReader reader_;
  PinnedField pinned_;
  Task pinnedPoll_;

  // What is to be inserted or deleted in the next turn, in order.
  std::vector<std::function<void()>> changes_;
  Task changing_;

  // The strongest change not told of yet.
  std::optional<Change> pending_;
  Task emission_;
  // Another look at what may tell otherwise soon: a field that may still be scrolling, an application that
  // told of no field.
  Task nextLook_;
  std::string scrollingText_;
  int looks_ = 0, vainLooks_ = 0;
  // Runs while the application may find its focus again.
  std::optional<Task> focusReturn_;
};

}  // namespace nimbletype
