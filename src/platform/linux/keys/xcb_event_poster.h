#pragma once
#include <cstdint>
#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "platform/keys/event_poster.h"
#include "platform/linux/keys/typing_layout.h"
#include "platform/linux/keys/x11_keymap.h"
#include "platform/linux/x11/xcb_support.h"
#include "platform/system/main_loop.h"

namespace nimbletype {

// Presses keys through XTEST. A character the active layout lacks gets a free key for a while; no key is ever
// given another meaning before applications have seen the last one, so a text with more such characters than
// there are free keys is typed in several goes.
class XcbEventPoster : public EventPoster {
 public:
  // `markWindow` tells which window takes the marks of our own events; 0 for none.
  XcbEventPoster(MainLoop& loop, std::function<std::uint32_t()> markWindow, std::string display = {});
  ~XcbEventPoster() override;

  bool mayPost() const override { return hasTestExtension_; }
  bool begin() override;
  void end() override;
  // A short line that the active layout can type.
  bool suits(std::u16string_view text) const override;
  void press(std::uint16_t keyCode, ModifierSet modifiers) override;
  void type(std::u16string_view chunk) override;

  // Whether something given to the poster has not been typed yet.
  bool isInjecting() const { return !waiting_.empty(); }

 private:
  struct HeldKey {
    std::uint8_t device = 0;
    xcb_keycode_t key = 0;
  };
  struct Held {
    std::vector<HeldKey> keys;
    bool capsLock = false;
  };

  void connect();
  void typeWaiting();
  void post(const TypingBatch& batch, const TypingLayout& layout);
  void mapKeys(const TypingBatch& batch);
  void unmapKeys();
  void mark(bool posting);
  void typeStroke(const KeyStroke& stroke, const TypingLayout& layout);
  void holdModifiers(std::uint16_t modifiers, const TypingLayout& layout, bool down);
  void fakeKey(xcb_keycode_t key, bool down);
  void fakeHeldKey(const HeldKey& held, bool down);
  void lockCaps(bool on);
  Held readHeld(const TypingLayout& layout) const;
  std::vector<std::uint8_t> keyboards() const;

  MainLoop& loop_;
  std::function<std::uint32_t()> markWindow_;
  std::string display_;
  XcbConnection connection_;
  xcb_atom_t markAtom_ = XCB_ATOM_NONE;
  X11Modifiers modifiers_;
  bool hasTestExtension_ = false;
  std::uint8_t firstDeviceEvent_ = 0;
  std::deque<Stroke> waiting_;
  std::vector<xcb_keycode_t> mappedKeys_;
  bool waitsForKeys_ = false;  // for free ones, once those in use have been given back
  Task unmap_;
};

}  // namespace nimbletype
