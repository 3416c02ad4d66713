#include "platform/scripted/keys/scripted_event_tap.h"

#include "tests/platform/keys/event_tap_conformance.h"

namespace nimbletype {
namespace {

struct ScriptedTapHarness {
  ScriptedEventTap scripted;

  EventTap& tap() { return scripted; }
  std::vector<KeyCombo> press(const std::vector<KeyCombo>& keys) {
    std::vector<KeyCombo> received;
    for (const KeyCombo& combo : keys)
      if (!scripted.press({combo.keyCode, combo.modifiers, {}, false})) received.push_back(combo);
    return received;
  }
  void pointer() { scripted.pointer(); }
  void postOwn(const KeyCombo& combo) { scripted.ownPress({combo.keyCode, combo.modifiers, {}, false}); }
  void settle() {}
};

INSTANTIATE_TYPED_TEST_SUITE_P(Scripted, EventTapConformance, ScriptedTapHarness);

}  // namespace
}  // namespace nimbletype
