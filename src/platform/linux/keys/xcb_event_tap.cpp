#include "platform/linux/keys/xcb_event_tap.h"

#include <algorithm>

namespace nimbletype {

namespace {

using namespace std::chrono_literals;

constexpr std::chrono::milliseconds startPatience = 2s;
constexpr Milliseconds relaunchPause = 1s;  // after a relay that did not live longer than this

bool mayStillAnswer(const RelayMessage& question) {
  const auto now = std::chrono::steady_clock::now().time_since_epoch();
  return now < std::chrono::nanoseconds(question.answerBy);
}

KeyPress keyPress(const RelayMessage& message) {
  const KeyCombo& combo = message.combos[0];
  return {combo.keyCode, combo.modifiers, std::string(message.characters()), message.isRepeat};
}

}  // namespace

XcbEventTap::XcbEventTap(MainLoop& loop, std::string display, std::string relay,
                         std::chrono::milliseconds deadline)
    : loop_(loop),
      display_(std::move(display)),
      program_(std::move(relay)),
      deadline_(deadline),
      self_(std::make_shared<XcbEventTap*>(this)) {}

XcbEventTap::~XcbEventTap() {
  stop();
}

bool XcbEventTap::start(Handler handler) {
  if (running_) return true;
  if (!launch()) return false;
  const auto ready = relay_->receive(startPatience);
  if (!ready || ready->kind != RelayMessage::Kind::ready) {
    relay_.reset();
    return false;
  }
  handler_ = std::move(handler);
  running_ = true;
  onMessage(*ready);
  listen();
  return true;
}

void XcbEventTap::stop() {
  running_ = false;
  relaunch_.cancel();
  relay_.reset();
  markWindow_ = 0;
}

void XcbEventTap::setTakeable(std::span<const KeyCombo> shown) {
  if (std::ranges::equal(shown, takeable_)) return;
  takeable_.assign(shown.begin(), shown.end());
  if (relay_) relay_->send(RelayMessage::list(RelayMessage::Kind::takeable, takeable_));
}

void XcbEventTap::setShortcuts(std::span<const KeyCombo> shortcuts) {
  if (std::ranges::equal(shortcuts, shortcuts_)) return;
  shortcuts_.assign(shortcuts.begin(), shortcuts.end());
  if (relay_) relay_->send(RelayMessage::list(RelayMessage::Kind::shortcuts, shortcuts_));
}

bool XcbEventTap::launch() {
  launchedAt_ = loop_.now();
  ++launches_;
  relay_ = RelayProcess::launch(program_, display_, deadline_);
  return relay_ != nullptr;
}

// What the relay says is handled on the main thread; what arrives once this tap or that relay has gone is
// not.
void XcbEventTap::listen() {
  const auto post = [&loop = loop_, self = std::weak_ptr(self_), launch = launches_](auto job) {
    loop.post([self, launch, job = std::move(job)] {
      if (const auto tap = self.lock(); tap && (*tap)->launches_ == launch && (*tap)->running_) job(**tap);
    });
  };
  relay_->listen(
      [post](const RelayMessage& message) { post([message](XcbEventTap& tap) { tap.onMessage(message); }); },
      [post] { post([](XcbEventTap& tap) { tap.onRelayEnded(); }); });
}

void XcbEventTap::sendCombos() const {
  relay_->send(RelayMessage::list(RelayMessage::Kind::takeable, takeable_));
  relay_->send(RelayMessage::list(RelayMessage::Kind::shortcuts, shortcuts_));
}

void XcbEventTap::onMessage(const RelayMessage& message) {
  switch (message.kind) {
    case RelayMessage::Kind::ready:
      markWindow_ = message.window;
      return sendCombos();
    case RelayMessage::Kind::pointer:
      handler_(PointerPress{});
      return;
    case RelayMessage::Kind::key:
      // The application already has this key: a handler that would take it must not see it.
      if (!canBeTaken(message.combos[0])) handler_(keyPress(message));
      return;
    case RelayMessage::Kind::question:
      return onQuestion(message);
    default:
      return;
  }
}

// A question that waited too long is answered only to show that we are alive: the relay has passed the key
// on.
void XcbEventTap::onQuestion(const RelayMessage& question) {
  RelayMessage answer;
  answer.kind = RelayMessage::Kind::answer;
  answer.id = question.id;
  answer.swallow = mayStillAnswer(question) && handler_(keyPress(question));
  // The handler may have stopped the tap.
  if (relay_) relay_->send(answer);
}

void XcbEventTap::onRelayEnded() {
  markWindow_ = 0;
  relay_.reset();
  const bool livedLong = loop_.now() - launchedAt_ > relaunchPause;
  relaunch_ = loop_.after(livedLong ? 0ms : relaunchPause, [this] {
    if (launch()) listen();
  });
}

bool XcbEventTap::canBeTaken(const KeyCombo& combo) const {
  return std::ranges::count(takeable_, combo) + std::ranges::count(shortcuts_, combo) > 0;
}

}  // namespace nimbletype
