#include "platform/linux/keys/relay/composition.h"

#include <cstdlib>
#include <string>

namespace nimbletype {

namespace {

std::string typingLocale() {
  for (const char* name : {"LC_ALL", "LC_CTYPE", "LANG"})
    if (const char* value = std::getenv(name); value && *value) return value;
  return "C";
}

}  // namespace

Composition::Composition(xkb_context* context) {
  if (!context) return;
  std::unique_ptr<xkb_compose_table, Unref> table;
  // The locale may have no table of its own; dead keys do the same in nearly all.
  for (const std::string& locale : {typingLocale(), std::string("en_US.UTF-8")})
    if (!table)
      table.reset(xkb_compose_table_new_from_locale(context, locale.c_str(), XKB_COMPOSE_COMPILE_NO_FLAGS));
  if (table) state_.reset(xkb_compose_state_new(table.get(), XKB_COMPOSE_STATE_NO_FLAGS));
}

bool Composition::pressed(xkb_keysym_t symbol) {
  if (!state_) return false;
  const bool begun = xkb_compose_state_get_status(state_.get()) == XKB_COMPOSE_COMPOSING;
  xkb_compose_state_feed(state_.get(), symbol);
  return begun;
}

void Composition::reset() {
  if (state_) xkb_compose_state_reset(state_.get());
}

}  // namespace nimbletype
