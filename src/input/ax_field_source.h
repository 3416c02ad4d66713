#pragma once
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "input/attach_retry.h"
#include "input/ax_element.h"
#include "input/field_reading.h"
#include "input/field_source.h"
#include "input/page_and_window.h"
#include "input/web_accessibility.h"
#include "platform/event_tap.h"
#include "platform/main_loop.h"
#include "platform/system_log.h"
#include "platform/workspace.h"

namespace nimbletype {

class TextInjector;

// The field source for every application but this one. It follows the frontmost application, notices when its
// focused element, that element's text or selection change, and reads the focused field on request.
class AXFieldSource final : public FieldSource {
 public:
  struct Desktop {
    Accessibility& accessibility;
    Workspace& workspace;
    const SecureInput& secureInput;
    MainLoop& loop;
    SystemLog& log;
  };
  AXFieldSource(Desktop desktop, TextInjector& injector);
  ~AXFieldSource() override;
  AXFieldSource(const AXFieldSource&) = delete;
  AXFieldSource& operator=(const AXFieldSource&) = delete;

  // Follows the frontmost application from now on.
  void start();

  std::optional<FieldSnapshot> snapshot() override;
  std::optional<std::string> whyNoField() const override { return whyNoField_; }
  void onChange(std::function<void(Change)> changed) override { onChange_ = std::move(changed); }
  void insert(const std::string& text, InsertionMethod method) override;
  void deleteBackwards(int count) override;

 private:
  void frontmostChanged();
  void attach();
  bool tryToAttach();
  void notified(std::string_view name);
  AXElement focusedElement();
  void watch(const AXElement& element);

  void emitSoon(Change change);
  void emitNow();

  FieldSnapshot describe(const AXElement& element, const FieldState& state);
  void readText(const AXElement& element, const FieldState& state, FieldSnapshot& snapshot);

  Desktop desktop_;
  TextInjector& injector_;
  std::function<void(Change)> onChange_;

  std::optional<RunningApp> app_;
  AXElement appElement_;
  std::optional<Task> observer_;
  AXElement watched_;
  std::optional<Task> watching_;
  std::optional<PageAndWindow> focusInfo_;  // of the watched element
  WebAccessibility webAccessibility_;
  std::optional<std::string> whyNoField_;
  AttachRetry attachRetry_;
  FieldTextReader textReader_;

  // The strongest change not told of yet.
  std::optional<Change> pending_;
  Task emission_;
};

}  // namespace nimbletype
