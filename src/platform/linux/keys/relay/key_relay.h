#pragma once
#include <chrono>
#include <optional>

#include "platform/linux/keys/relay/key_grabs.h"
#include "platform/linux/keys/relay/keyboard_state.h"
#include "platform/linux/keys/relay/raw_input.h"
#include "platform/linux/keys/relay_message.h"
#include "platform/linux/x11/xcb_support.h"

namespace nimbletype {

// Stands between the X server and the application, in a process of its own. While a grabbed key is undecided
// the server holds back the whole keyboard, so nothing here takes long: the application is asked, and when it
// does not answer in time (it is busy, stopped in a debugger, dead) the key goes on to where it was meant
// for.
class KeyRelay {
 public:
  // Messages come and go over the socket, one to a packet.
  KeyRelay(XcbConnection connection, int socket, std::chrono::milliseconds deadline);

  bool isValid() const { return rawInput_.isValid() && keyboard_.isValid(); }
  // Works until the application ends or the display does.
  void run();

 private:
  using Clock = std::chrono::steady_clock;
  struct Question {
    std::uint32_t id = 0;
    Clock::time_point deadline;
  };

  void leave();
  int waitingTime() const;
  void readEvents();
  bool readMessages();
  void handle(const xcb_generic_event_t& event);
  void handle(const RelayMessage& message);
  void onRawPress(const RawPress& press);
  void onGrabbedKey(const xcb_key_press_event_t& press);
  void onMark(const xcb_client_message_event_t& mark);
  void ask(RelayMessage message);
  void passOn();
  void swallow();
  void checkDeadline();
  RelayMessage keyMessage(RelayMessage::Kind kind, xcb_keycode_t keycode, std::uint16_t state,
                          bool repeat) const;
  void send(const RelayMessage& message) const;

  XcbConnection connection_;
  int socket_;
  std::chrono::milliseconds deadline_;
  xcb_window_t root_;
  KeyGrabs grabs_;
  KeyboardState keyboard_;
  RawInput rawInput_;
  RecentPresses recent_;
  xcb_window_t markWindow_;
  xcb_atom_t markAtom_;
  std::optional<Question> question_;
  std::uint32_t lastQuestion_ = 0;
  bool isInjecting_ = false;       // the application posts events of its own just now
  bool applicationHangs_ = false;  // it let a question go unanswered and has not been heard of since
};

}  // namespace nimbletype
