#include "input/ax_field_source.h"

#include <algorithm>
#include <utility>

#include "input/caret_geometry.h"
#include "input/field_role.h"
#include "input/text_around_caret.h"
#include "input/text_injector.h"

namespace nimbletype {

AXFieldSource::AXFieldSource(Desktop desktop, TextInjector& injector)
    : desktop_(desktop), injector_(injector), attachRetry_(desktop.loop) {}

AXFieldSource::~AXFieldSource() {
  desktop_.workspace.onFrontmostChanged({});
}

void AXFieldSource::start() {
  desktop_.workspace.onFrontmostChanged([this] { frontmostChanged(); });
  frontmostChanged();
}

void AXFieldSource::frontmostChanged() {
  auto app = desktop_.workspace.frontmost();
  if (app == app_) return;
  app_ = std::move(app);
  attachRetry_.cancel();
  observer_.reset();
  watch({});
  appElement_ = {};
  attach();
  emitSoon(Change::app);
}

void AXFieldSource::attach() {
  if (!app_ || tryToAttach()) return;
  attachRetry_.start([this] { return tryToAttach(); },
                     [this](Milliseconds wait) {
                       desktop_.log.log("input", "attached to " + app_->appName + " on a later look, after " +
                                                     std::to_string(wait.count()) + " ms");
                       emitSoon(Change::focus);
                     });
}

bool AXFieldSource::tryToAttach() {
  Accessibility& accessibility = desktop_.accessibility;
  if (!appElement_) {
    ObjectRef element = accessibility.application(app_->processID);
    if (!element) return false;
    appElement_ = AXElement(accessibility, std::move(element));
  }
  webAccessibility_.enable(*app_, accessibility, appElement_.ref());
  if (!observer_)
    observer_ = accessibility.observe(app_->processID,
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
  AXElement element = appElement_.element("AXFocusedUIElement");
  if (!(element == watched_)) watch(element);
  return element;
}

void AXFieldSource::watch(const AXElement& element) {
  watched_ = element;
  focusInfo_.reset();
  watching_.reset();
  if (element && app_) watching_ = desktop_.accessibility.watch(app_->processID, element.ref());
}

// Applications tell of one thing in several notifications. Those of one turn of the main loop are told as
// one.
void AXFieldSource::emitSoon(Change change) {
  if (pending_) {
    pending_ = std::min(*pending_, change);  // the enumeration runs from the strongest to the weakest
    return;
  }
  pending_ = change;
  emission_ = desktop_.loop.after(Milliseconds(0), [this] { emitNow(); });
}

void AXFieldSource::emitNow() {
  const auto change = std::exchange(pending_, std::nullopt);
  if (!change) return;
  // The new element has to be watched even when nobody asks for a snapshot.
  if (*change == Change::focus) focusedElement();
  if (onChange_) onChange_(*change);
}

std::optional<FieldSnapshot> AXFieldSource::snapshot() {
  const std::string bundle = app_ ? app_->bundleID : std::string();
  const AXElement element = focusedElement();
  const auto fail = [this](std::string reason) {
    whyNoField_ = std::move(reason);
    return std::nullopt;
  };
  if (!element) return fail(no_field::nothingFocused(bundle));
  const bool keepOut = desktop_.secureInput.isOn();
  const FieldState state = readFieldState(element, keepOut);
  if (!state.takesText) return fail(no_field::notATextField(bundle, state.role));
  if (!keepOut && !state.selection) return fail(no_field::noCaretPosition(bundle, state.role));

  whyNoField_.reset();
  FieldSnapshot snapshot = describe(element, state);
  if (state.isSecure)
    whyNoField_ = no_field::keepsItsText(bundle, state.role);
  else
    readText(element, state, snapshot);
  return snapshot;
}

FieldSnapshot AXFieldSource::describe(const AXElement& element, const FieldState& state) {
  if (!focusInfo_) focusInfo_ = readPageAndWindow(appElement_, element);
  FieldSnapshot snapshot;
  snapshot.bundleID = app_->bundleID;
  snapshot.appName = app_->appName.empty() ? app_->bundleID : app_->appName;
  snapshot.fieldKey = app_->bundleID + ":" + std::to_string(element.ref()->hash());
  snapshot.role = state.role;
  snapshot.selectionLength = state.selection ? state.selection->length : 0;
  snapshot.fieldFrame = state.frame;
  snapshot.isSecure = state.isSecure;
  snapshot.domain = focusInfo_->domain;
  snapshot.windowTitle = focusInfo_->windowTitle;
  return snapshot;
}

void AXFieldSource::readText(const AXElement& element, const FieldState& state, FieldSnapshot& snapshot) {
  FieldText text = textReader_.read(element, state);
  snapshot.before = std::move(text.before);
  snapshot.after = std::move(text.after);
  snapshot.fontSize = text.font.size;
  snapshot.fontName = std::move(text.font.name);
  snapshot.lineStartX = text.lineStartX;
  const auto place = caretFromCharacters(text.boxes, endsInLineBreak(snapshot.before));
  if (!place) return;
  snapshot.caretRect = place->rect;
  if (place->lineStartX) snapshot.lineStartX = place->lineStartX;
}

void AXFieldSource::insert(const std::string& text, InsertionMethod method) {
  if (method == InsertionMethod::accessibility)
    injector_.write(text, focusedElement().ref());
  else
    injector_.type(text);
}

void AXFieldSource::deleteBackwards(int count) {
  injector_.deleteBackwards(count);
}

}  // namespace nimbletype
