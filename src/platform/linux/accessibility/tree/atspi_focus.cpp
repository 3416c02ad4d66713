#include "platform/linux/accessibility/tree/atspi_focus.h"

#include <algorithm>

#include "platform/linux/accessibility/tree/atspi_search.h"

namespace nimbletype {
namespace {

constexpr std::size_t mostClaims = 8;
// Looking for the focus costs the application a walk over its tree, and a lost focus is mostly followed by an
// event that names the new one.
constexpr std::int64_t searchPause = 250'000;  // µs

bool isEditableText(std::uint32_t role, AtspiStates states) {
  return states.has(atspi_state::editable) || role == atspi_role::passwordText;
}

}  // namespace

AtspiFocus::Effect AtspiFocus::heard(const AtspiEvent& event) {
  using Kind = AtspiEvent::Kind;
  Application& app = applications_[event.source->bus()];
  switch (event.kind) {
    case Kind::focused:
      return {.element = focused(app, event.source)};
    case Kind::unfocused:
      return {.element = unfocused(app, event.source)};
    case Kind::caretMoved:
      return {.element = caretMoved(app, event.source)};
    case Kind::windowActivated: {
      const bool other = !sameObject(app.window, event.source);
      app.window = event.source;
      app.searchNotBefore = 0;
      return {.window = other};
    }
    case Kind::windowDeactivated:
      // The next window's activation may have come first.
      if (sameObject(app.window, event.source)) app.window = nullptr;
      return {};
    case Kind::textChanged:
    case Kind::selectionChanged:
      return {};
  }
  return {};
}

bool AtspiFocus::focused(Application& app, const AtspiRef& element) {
  app.refused.clear();
  const AtspiRef& latest = app.claims.empty() ? app.element : app.claims.back().element;
  if (sameObject(latest, element)) return false;  // GTK says it twice
  if (app.claims.size() == mostClaims) app.claims.erase(app.claims.begin());
  app.claims.push_back({element});
  return true;
}

bool AtspiFocus::unfocused(Application& app, const AtspiRef& element) {
  const auto claimed = [&](const Claim& c) { return sameObject(c.element, element); };
  const bool had = sameObject(app.element, element) || std::ranges::any_of(app.claims, claimed);
  if (!had) return false;
  if (sameObject(app.element, element)) app.element = nullptr;
  std::erase_if(app.claims, claimed);
  app.searchNotBefore = g_get_monotonic_time() + searchPause;
  return true;
}

bool AtspiFocus::caretMoved(Application& app, const AtspiRef& element) {
  const auto same = [&](const AtspiRef& other) { return sameObject(other, element); };
  if (same(app.element) || std::ranges::any_of(app.refused, same)) return false;
  if (std::ranges::any_of(app.claims, [&](const Claim& c) { return same(c.element); })) return false;
  if (app.claims.size() < mostClaims) app.claims.push_back({element, true});
  return true;
}

AtspiFocus::Facts AtspiFocus::factsOf(const AtspiRef& element, Deadline deadline) const {
  if (!element) return {};
  DBusBatch batch(bus_.connection(), deadline);
  const auto role = batch.call({element->bus(), element->path(), atspi::accessible, "GetRole", nullptr});
  const auto states = batch.call({element->bus(), element->path(), atspi::accessible, "GetState", nullptr});
  batch.wait();
  return {atspi::roleOf(batch.reply(role)), atspi::statesOf(batch.reply(states)),
          batch.reply(role) != nullptr && batch.reply(states) != nullptr};
}

// A caret moves in other texts too, such as a log that grows: it counts when its text says that it is
// focused, or when what claims the focus is no text at all. A pane does not take the focus from the text
// inside it.
bool AtspiFocus::accepts(const Application& app, const Claim& claim, const Facts& claimed,
                         const Facts& current) const {
  const bool currentIsText = app.element && isEditableText(current.role, current.states);
  if (!claim.byCaret) return !(currentIsText && isPlainContainer(claimed.role));
  if (!claimed.known || !isEditableText(claimed.role, claimed.states)) return false;
  return claimed.states.has(atspi_state::focused) || !currentIsText;
}

void AtspiFocus::settle(Application& app, Deadline deadline) {
  if (app.claims.empty()) return;
  Facts current = factsOf(app.element, deadline);
  for (const Claim& claim : std::exchange(app.claims, {})) {
    const Facts claimed = factsOf(claim.element, deadline);
    if (accepts(app, claim, claimed, current)) {
      app.element = claim.element;
      current = claimed;
    } else if (claim.byCaret) {
      app.refused.push_back(claim.element);
    }
  }
}

AtspiRef AtspiFocus::element(const std::string& application, Deadline deadline) {
  Application& app = applications_[application];
  settle(app, deadline);
  if (app.element || g_get_monotonic_time() < app.searchNotBefore) return app.element;
  const AtspiRef top = window(application, deadline);
  if (top) app.element = atspi::findFocused(bus_, top, deadline);
  if (!app.element) app.searchNotBefore = g_get_monotonic_time() + searchPause;
  return app.element;
}

AtspiRef AtspiFocus::window(const std::string& application, Deadline deadline) {
  Application& app = applications_[application];
  if (!app.window) app.window = atspi::findActiveWindow(bus_, application, deadline);
  return app.window;
}

}  // namespace nimbletype
