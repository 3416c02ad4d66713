#include "platform/linux/keys/relay/key_relay.h"

#include <poll.h>
#include <sys/socket.h>

#include "platform/linux/keys/own_event_mark.h"

namespace nimbletype {

namespace {

constexpr int quietTime = 200;  // ms without events before the layout is read anew

xcb_window_t createMarkWindow(xcb_connection_t* connection, xcb_window_t root) {
  const xcb_window_t window = xcb_generate_id(connection);
  xcb_create_window(connection, XCB_COPY_FROM_PARENT, window, root, -1, -1, 1, 1, 0,
                    XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
  return window;
}

}  // namespace

KeyRelay::KeyRelay(XcbConnection connection, int socket, std::chrono::milliseconds deadline)
    : connection_(std::move(connection)),
      socket_(socket),
      deadline_(deadline),
      root_(rootWindow(connection_.get())),
      grabs_(connection_.get(), root_),
      keyboard_(connection_.get()),
      rawInput_(connection_.get(), root_),
      markWindow_(createMarkWindow(connection_.get(), root_)),
      markAtom_(atomNamed(connection_.get(), ownEventMark)) {}

void KeyRelay::run() {
  RelayMessage ready;
  ready.window = markWindow_;
  send(ready);
  while (!xcb_connection_has_error(connection_.get())) {
    readEvents();
    checkDeadline();
    xcb_flush(connection_.get());
    pollfd fds[] = {{xcb_get_file_descriptor(connection_.get()), POLLIN, 0}, {socket_, POLLIN, 0}};
    const int count = poll(fds, 2, waitingTime());
    if (count == 0 && !question_ && keyboard_.isStale()) {
      keyboard_.refresh();
      grabs_.refreshModifiers();
    }
    if (count > 0 && fds[1].revents && !readMessages()) break;
  }
  leave();
}

// Lets go of the keyboard so that not even a key pressed at this moment is lost.
void KeyRelay::leave() {
  grabs_.setTakeable({});
  grabs_.setShortcuts({});
  syncWithServer(connection_.get());
  applicationHangs_ = true;
  readEvents();
  if (question_) passOn();
  syncWithServer(connection_.get());
}

int KeyRelay::waitingTime() const {
  if (!question_) return keyboard_.isStale() ? quietTime : -1;
  const auto left = std::chrono::ceil<std::chrono::milliseconds>(question_->deadline - Clock::now());
  return static_cast<int>(std::max<std::int64_t>(left.count(), 0));
}

void KeyRelay::readEvents() {
  while (const XcbEvent event{xcb_poll_for_event(connection_.get())}) handle(*event);
}

void KeyRelay::handle(const xcb_generic_event_t& event) {
  if (keyboard_.handle(event)) return;
  if (const auto press = rawInput_.read(event)) return onRawPress(*press);
  switch (event.response_type & 0x7f) {
    case XCB_KEY_PRESS:
      return onGrabbedKey(reinterpret_cast<const xcb_key_press_event_t&>(event));
    case XCB_CLIENT_MESSAGE:
      return onMark(reinterpret_cast<const xcb_client_message_event_t&>(event));
    case XCB_FOCUS_IN:
    case XCB_FOCUS_OUT: {
      const auto mode = reinterpret_cast<const xcb_focus_in_event_t&>(event).mode;
      if (mode == XCB_NOTIFY_MODE_NORMAL || mode == XCB_NOTIFY_MODE_WHILE_GRABBED) grabs_.followFocus();
      return;
    }
    case XCB_DESTROY_NOTIFY:
    case XCB_UNMAP_NOTIFY:
      return grabs_.followFocus();
    default:
      return;
  }
}

// Posted in line with the events it speaks of, so it needs no clock.
void KeyRelay::onMark(const xcb_client_message_event_t& mark) {
  if (mark.type == markAtom_) isInjecting_ = mark.data.data32[0] != 0;
}

void KeyRelay::onRawPress(const RawPress& press) {
  if (!press.isKey) {
    RelayMessage message;
    message.kind = RelayMessage::Kind::pointer;
    return send(message);
  }
  if (isModifierKey(productKeyCode(press.detail))) return;
  const RelayMessage message =
      keyMessage(RelayMessage::Kind::key, press.detail, keyboard_.modifiers(), false);
  using Fate = RecentPresses::Fate;
  const bool own = press.isSynthetic && isInjecting_;
  const bool composed = !own && keyboard_.composes(press.detail);
  // A grab will deliver this one again, and then it can be taken.
  const bool awaited = grabs_.covers(message.combos[0]) && !composed;
  const Fate fate = own ? Fate::own : awaited ? Fate::awaited : Fate::reported;
  recent_.add({press.detail, press.time, fate});
  if (fate == Fate::reported) send(message);
}

void KeyRelay::onGrabbedKey(const xcb_key_press_event_t& press) {
  using Fate = RecentPresses::Fate;
  const Fate fate = recent_.find(press.detail, press.time);
  if (fate == Fate::own || fate == Fate::reported || applicationHangs_) return passOn();
  // The server makes up the repeats of a held key itself: no device has pressed it.
  const bool isRepeat = fate == Fate::unknown;
  ask(keyMessage(RelayMessage::Kind::question, press.detail, press.state, isRepeat));
}

RelayMessage KeyRelay::keyMessage(RelayMessage::Kind kind, xcb_keycode_t keycode, std::uint16_t state,
                                  bool repeat) const {
  RelayMessage message;
  message.kind = kind;
  message.isRepeat = repeat;
  message.comboCount = 1;
  message.combos[0] = {productKeyCode(keycode), grabs_.modifiers().modifierSet(state)};
  const std::string text = keyboard_.textOf(keycode);
  message.textSize = static_cast<std::uint8_t>(std::min(text.size(), message.text.size()));
  std::copy_n(text.begin(), message.textSize, message.text.begin());
  return message;
}

void KeyRelay::ask(RelayMessage message) {
  const auto now = Clock::now();
  question_ = Question{++lastQuestion_, now + deadline_};
  message.id = question_->id;
  message.answerBy = std::chrono::nanoseconds((now + answerLimit(deadline_)).time_since_epoch()).count();
  send(message);
}

void KeyRelay::passOn() {
  question_.reset();
  xcb_allow_events(connection_.get(), XCB_ALLOW_REPLAY_KEYBOARD, XCB_CURRENT_TIME);
}

// Ends the grab rather than letting it last until the key is released: what is typed before that must not
// come to us. The held key itself is gone with the grab.
void KeyRelay::swallow() {
  question_.reset();
  keyboard_.endComposition();
  xcb_ungrab_keyboard(connection_.get(), XCB_CURRENT_TIME);
}

void KeyRelay::checkDeadline() {
  if (!question_ || Clock::now() < question_->deadline) return;
  applicationHangs_ = true;
  passOn();
}

bool KeyRelay::readMessages() {
  RelayMessage message;
  while (true) {
    const ssize_t size = recv(socket_, &message, sizeof message, MSG_DONTWAIT);
    if (size < 0) return errno == EAGAIN || errno == EINTR;
    if (size != sizeof message) return false;
    applicationHangs_ = false;
    handle(message);
  }
}

void KeyRelay::handle(const RelayMessage& message) {
  switch (message.kind) {
    case RelayMessage::Kind::takeable:
      return grabs_.setTakeable(message.comboList());
    case RelayMessage::Kind::shortcuts:
      return grabs_.setShortcuts(message.comboList());
    case RelayMessage::Kind::answer:
      // An answer that comes late is about a key that has already been passed on.
      if (!question_ || question_->id != message.id) return;
      return message.swallow ? swallow() : passOn();
    default:
      return;
  }
}

// When the application does not read, what it misses is lost rather than waited for.
void KeyRelay::send(const RelayMessage& message) const {
  ::send(socket_, &message, sizeof message, MSG_DONTWAIT | MSG_NOSIGNAL);
}

}  // namespace nimbletype
