#pragma once
#include <xkbcommon/xkbcommon-compose.h>

#include <memory>

namespace nimbletype {

// Follows dead keys and Compose sequences as applications do, by the table of the user's locale. Where there
// is no table nothing composes.
class Composition {
 public:
  explicit Composition(xkb_context* context);

  // Takes the next key that was pressed. True when it belongs to a sequence that was begun before.
  bool pressed(xkb_keysym_t symbol);
  // The last key never reached an application.
  void reset();

 private:
  struct Unref {
    void operator()(xkb_compose_table* table) const { xkb_compose_table_unref(table); }
    void operator()(xkb_compose_state* state) const { xkb_compose_state_unref(state); }
  };
  std::unique_ptr<xkb_compose_state, Unref> state_;
};

}  // namespace nimbletype
