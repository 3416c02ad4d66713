#pragma once
#include <gtest/gtest.h>

#include <utility>
#include <vector>

#include "input/insertion/text_injector.h"
#include "input/source/ax_field_source.h"
#include "platform/scripted/accessibility/scripted_accessibility.h"
#include "platform/scripted/desktop/scripted_workspace.h"
#include "platform/scripted/drawing/fixed_font_metrics.h"
#include "platform/scripted/keys/recording_event_poster.h"
#include "platform/scripted/keys/scripted_secure_input.h"
#include "platform/scripted/pasteboard/scripted_pasteboard.h"
#include "platform/scripted/system/recording_system_log.h"
#include "platform/scripted/system/virtual_main_loop.h"

namespace nimbletype {

inline const RunningApp editor{42, "org.editor", "Editor", {}};
inline const RunningApp other{43, "org.other", "Other", {}};

class FieldSourceFixture : public testing::Test {
 protected:
  FieldSourceFixture() {
    window_ = add("AXWindow");
    ax_.at(window_).attributes["AXTitle"] = std::string("Letter");
    source_.onChange([this](Change change) { changes_.push_back(change); });
  }

  ObjectRef add(const char* role, std::optional<std::u16string> text = {}) {
    ScriptedElement element;
    element.attributes = {{"AXRole", std::string(role)}, {"AXFrame", TopLeftRect{100, 200, 400, 300}}};
    element.textOrigin = {104, 204, 8, 16};
    element.text = std::move(text);
    if (element.text) element.selection = {static_cast<std::int64_t>(element.text->size()), 0};
    return ax_.addElement(std::move(element));
  }
  void addApplication(const RunningApp& app) {
    ax_.at(ax_.addApplication(app.processID)).attributes["AXFocusedWindow"] = window_;
  }
  // The application in front, with this element focused.
  ObjectRef open(ObjectRef field) {
    addApplication(editor);
    ax_.focus(editor.processID, field);
    workspace_.bringToFront(editor);
    source_.start();
    settle();
    return field;
  }
  void settle() {
    loop_.advance(Milliseconds(0));
    loop_.runPosted();
  }
  FieldSnapshot read() {
    const auto snapshot = source_.snapshot();
    EXPECT_TRUE(snapshot) << source_.whyNoField().value_or("no reason");
    return snapshot.value_or(FieldSnapshot{});
  }
  std::string refusal() {
    EXPECT_FALSE(source_.snapshot());
    return source_.whyNoField().value_or("no reason");
  }
  std::vector<Change> takeChanges() {
    settle();
    return std::exchange(changes_, {});
  }

  VirtualMainLoop loop_;
  ScriptedAccessibility ax_{loop_};
  ScriptedWorkspace workspace_;
  ScriptedSecureInput secureInput_;
  RecordingSystemLog log_;
  FixedFontMetrics fonts_;
  RecordingEventPoster poster_;
  ScriptedPasteboard pasteboard_{loop_};
  TextInjector injector_{{poster_, ax_, pasteboard_, loop_, log_}};
  std::vector<Change> changes_;
  AXFieldSource source_{{ax_, workspace_, secureInput_, loop_, log_, fonts_}, injector_};
  ObjectRef window_;
};

}  // namespace nimbletype
