#include "input/source/ax_field_source.h"

#include <algorithm>
#include <utility>

#include "input/caret/caret_plausibility.h"
#include "input/field/field_role.h"
#include "input/insertion/text_injector.h"

namespace nimbletype {
namespace {

constexpr Milliseconds pinnedPollInterval{500};
// For so long an application may be without focus while it only passes through its menu bar or a key grab.
constexpr Milliseconds focusReturn{40};
// Fields scroll to their caret a while after the text has changed, and tell nobody.
constexpr Milliseconds scrollingTime{40};
constexpr int mostLooks = 5;
// An application that was too busy to answer tells nobody when it is no longer.
constexpr Milliseconds busyTime{150};
constexpr int mostLooksForAField = 3;

}  // namespace

AXFieldSource::AXFieldSource(const Services& services, TextInjector& injector)
    : s_(services),
      injector_(injector),
      attachRetry_(services.loop),
      reader_(services.secureInput, services.fonts, services.log) {}

AXFieldSource::~AXFieldSource() {
  s_.workspace.onFrontmostChanged({});
}

void AXFieldSource::start() {
  s_.workspace.onFrontmostChanged([this] { frontmostChanged(); });
  frontmostChanged();
}

void AXFieldSource::frontmostChanged() {
  if (!front_.set(s_.workspace.frontmost())) return;
  attachRetry_.cancel();
  pinnedPoll_.cancel();
  observer_.reset();
  watch({});
  appElement_ = {};
  attach();
  if (isPinned()) pollPinned();
  emitSoon(Change::app);
}

// Our own windows are never asked: they could not answer while this process waits for them.
void AXFieldSource::attach() {
  if (!app() || app()->isOurs || tryToAttach()) return;
  attachRetry_.start([this] { return tryToAttach(); },
                     [this](Milliseconds wait) {
                       s_.log.log("input", "attached to " + app()->appName + " on a later look, after " +
                                               std::to_string(wait.count()) + " ms");
                       emitSoon(Change::focus);
                     });
}

bool AXFieldSource::tryToAttach() {
  Accessibility& accessibility = s_.accessibility;
  if (!appElement_) {
    ObjectRef element = accessibility.application(app()->processID);
    if (!element) return false;
    appElement_ = AXElement(accessibility, std::move(element));
  }
  webAccessibility_.enable(*app(), accessibility, appElement_.ref());
  if (!observer_)
    observer_ = accessibility.observe(app()->processID,
                                      [this](std::string_view name, const ObjectRef&) { notified(name); });
  return focusedElement() && observer_;
}

void AXFieldSource::notified(std::string_view name) {
  const bool focus = name == "AXFocusedUIElementChanged" || name == "AXFocusedWindowChanged";
  if (focus) focusInfo_.reset();
  emitSoon(focus ? Change::focus : Change::value);
}

// Asked of the application anew each time: a focus that moved without a word is noticed here.
AXElement AXFieldSource::focusedElement() {
  if (!appElement_) return {};
  AXElement element = fieldElement();
  if (!(element == watched_)) watch(element);
  return element;
}

AXElement AXFieldSource::fieldElement() {
  if (isPinned())
    if (AXElement pinned = pinned_.find(appElement_)) return pinned;
  return appElement_.element("AXFocusedUIElement");
}

bool AXFieldSource::pinFocused() {
  return pin(appElement_.element("AXFocusedUIElement").ref());
}

bool AXFieldSource::pin(ObjectRef element) {
  if (!element || !app() || !appElement_) return false;
  pinned_.pin(app()->processID, AXElement(s_.accessibility, std::move(element)));
  emitSoon(Change::focus);
  pollPinned();
  return true;
}

void AXFieldSource::unpin() {
  pinned_.unpin();
  pinnedPoll_.cancel();
  emitSoon(Change::focus);
}

// What tells wrongly of its focus may tell nothing of its changes either.
void AXFieldSource::pollPinned() {
  pinnedPoll_ = s_.loop.after(pinnedPollInterval, [this] {
    emitSoon(Change::value);
    pollPinned();
  });
}

void AXFieldSource::watch(const AXElement& element) {
  watched_ = element;
  focusInfo_.reset();
  watching_.reset();
  if (element && app()) watching_ = s_.accessibility.watch(app()->processID, element.ref());
}

// Applications tell of one thing in several notifications. Those of one turn of the main loop are told as
// one.
void AXFieldSource::emitSoon(Change change) {
  const bool isUnderWay = pending_ && !focusReturn_;
  // The enumeration runs from the strongest to the weakest.
  pending_ = pending_ ? std::min(*pending_, change) : change;
  if (isUnderWay) return;
  emission_ = s_.loop.after(Milliseconds(0), [this] { emitNow(); });
}

void AXFieldSource::emitNow() {
  if (!mayComeBack()) tell();
}

void AXFieldSource::tell() {
  focusReturn_.reset();
  const auto change = std::exchange(pending_, std::nullopt);
  if (!change) return;
  // The new element has to be watched even when nobody asks for a snapshot.
  if (*change == Change::focus) focusedElement();
  if (onChange_) onChange_(*change);
}

// A focus that is lost and found again is no change: what is shown for the field stays.
bool AXFieldSource::mayComeBack() {
  const bool hadFocus =
      focusReturn_ || (watched_ && origin_ && app() && origin_->processID == app()->processID);
  if (pending_ != Change::focus || !hadFocus || focusedElement()) return false;
  if (!focusReturn_) focusReturn_ = s_.loop.after(focusReturn, [this] { tell(); });
  return true;
}

std::optional<FieldSnapshot> AXFieldSource::snapshot() {
  const AXElement element = focusedElement();
  FieldReader::Reading reading{{}, no_field::nothingFocused(app() ? app()->bundleID : std::string())};
  if (element) reading = reader_.read(*app(), element);
  whyNoField_ = std::move(reading.whyNoField);
  if (whyNoField_ && isPinned() && pinned_.searchNote())
    *whyNoField_ += no_field::pinnedNotFound(*pinned_.searchNote());
  if (!reading.snapshot) return lookForAFieldAgain(), std::nullopt;

  vainLooks_ = 0;
  origin_ = Origin{app()->processID, element};
  if (!focusInfo_) focusInfo_ = readPageAndWindow(appElement_, element);
  reading.snapshot->domain = focusInfo_->domain;
  reading.snapshot->windowTitle = focusInfo_->windowTitle;
  followScrolling(*reading.snapshot);
  return std::move(reading.snapshot);
}

void AXFieldSource::lookForAFieldAgain() {
  const bool hadField = origin_ && app() && origin_->processID == app()->processID;
  if (!hadField || vainLooks_ >= mostLooksForAField) return;
  ++vainLooks_;
  nextLook_ = s_.loop.after(busyTime, [this] { emitSoon(Change::value); });
}

void AXFieldSource::followScrolling(const FieldSnapshot& snapshot) {
  nextLook_.cancel();
  if (std::exchange(scrollingText_, snapshot.before) != snapshot.before) looks_ = 0;
  const bool isHidden =
      snapshot.caretRect && snapshot.fieldFrame && isOutOfSight(*snapshot.caretRect, *snapshot.fieldFrame);
  if (!isHidden || looks_ >= mostLooks) return;
  ++looks_;
  nextLook_ = s_.loop.after(scrollingTime, [this] { emitSoon(Change::value); });
}

// Without an element to compare with, as when the application does not answer, the frontmost application has
// to do.
std::optional<InsertionTarget> AXFieldSource::insertionTarget(const std::optional<Origin>& origin) {
  const AXElement element = focusedElement();
  const auto frontmost = s_.workspace.frontmost();
  const auto isSame = [&](const Origin& from) {
    return frontmost && frontmost->processID == from.processID && (!element || element == from.element);
  };
  if (origin && !isSame(*origin)) {
    s_.log.log("input", "the focus has moved: nothing is inserted");
    return std::nullopt;
  }
  return InsertionTarget{element.ref(), app() && app()->isTerminal,
                         [this, origin] { return insertionTarget(origin).has_value(); }};
}

// In a turn of their own: looking at the application takes longer than a key press may be held.
void AXFieldSource::soon(std::function<void()> change) {
  changes_.push_back(std::move(change));
  if (changes_.size() > 1) return;
  changing_ = s_.loop.after(Milliseconds(0), [this] {
    for (auto& each : std::exchange(changes_, {})) each();
  });
}

void AXFieldSource::insert(const std::string& text, InsertionMethod method) {
  soon([this, text, method, origin = origin_] { insertNow(text, method, origin); });
}

void AXFieldSource::deleteBackwards(int count) {
  soon([this, count, origin = origin_] {
    if (const auto target = insertionTarget(origin)) injector_.deleteBackwards(count, *target);
  });
}

void AXFieldSource::insertNow(const std::string& text, InsertionMethod method,
                              const std::optional<Origin>& origin) {
  const auto target = insertionTarget(origin);
  if (!target) return;
  switch (method) {
    case InsertionMethod::typing:
      return injector_.type(text, *target);
    case InsertionMethod::accessibility:
      return injector_.write(text, *target);
    case InsertionMethod::paste:
      return injector_.paste(text, *target);
  }
}

}  // namespace nimbletype
