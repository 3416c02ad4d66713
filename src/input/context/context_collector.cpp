#include "input/context/context_collector.h"

#include "input/context/context_cleaning.h"
#include "text/format/date_format.h"

namespace nimbletype {
namespace {

// What the longer of the two prompts takes of each.
constexpr std::size_t screenLimit = 900, windowsLimit = 500, copyLimit = 500;

std::optional<TopLeftRect> placeOf(const FieldSnapshot& snapshot) {
  return snapshot.caretRect ? snapshot.caretRect : snapshot.fieldFrame;
}

std::string besideText(const std::vector<std::vector<PlacedText>>& windows) {
  std::string joined;
  for (const auto& lines : windows) {
    const std::string text = firstLines(lines, windowsLimit / windows.size() - 1);
    if (!joined.empty() && !text.empty()) joined += '\n';
    joined += text;
  }
  return joined;
}

}  // namespace

ContextCollector::ContextCollector(const Services& services, const Preferences& prefs, UserIdentity user,
                                   SurroundingsReader::MayRead mayRead)
    : s_(services),
      prefs_(prefs),
      user_(std::move(user)),
      reader_({services.loop, services.accessibility, services.workspace, services.screens,
               services.screenReader},
              std::move(mayRead)) {
  if (services.clipboard)
    clipboard_.emplace(*services.clipboard, services.loop, [this] { return reader_.mayReadFrontmost(); });
  for (const auto* setting : {&prefs.isEnabled, &prefs.contextScreen, &prefs.contextRecent,
                              &prefs.contextNearbyWindows, &prefs.contextClipboard})
    observing_.push_back(setting->observe([this] { settingsChanged(); }));
  settingsChanged();
}

ContextCollector::Wanted ContextCollector::wanted() const {
  const bool on = prefs_.isEnabled.get();
  return {on && prefs_.contextScreen.get(), on && prefs_.contextRecent.get(),
          on && prefs_.contextNearbyWindows.get(), on && prefs_.contextClipboard.get()};
}

void ContextCollector::settingsChanged() {
  const Wanted now = wanted();
  if (clipboard_) clipboard_->setOn(now.clipboard);
  if (!now.recent) memory_.forget();
  forgetWindows();
  if (now.anyWindow()) focusMoved();
}

void ContextCollector::forgetWindows() {
  look_ = Task();
  reading_ = Task();
  current_.reset();
}

void ContextCollector::focusMoved() {
  if (clipboard_) clipboard_->frontmostChanged();
  hasMoved_ = true;
  if (wanted().anyWindow()) look_ = s_.loop.after(settle, [this] { lookAround(); });
}

void ContextCollector::lookAround() {
  if (!wanted().anyWindow() || s_.secureInput.isOn()) return forgetWindows();
  hasMoved_ = false;
  titleThen_.reset();
  auto window = reader_.lookedAt();
  if (!window) return leave();
  if (!current_ || current_->place.key() != window->key()) {
    leave();
    enter(std::move(*window));
  } else {
    current_->place = std::move(*window);
  }
  if (isStale() && !current_->isReading) readFocused();
}

void ContextCollector::leave() {
  reading_ = Task();
  if (current_ && wanted().recent) {
    auto lines = std::move(current_->ofField);
    lines.insert(lines.end(), current_->lines.begin(), current_->lines.end());
    memory_.left(current_->place.key(), std::move(lines), s_.loop.now());
  }
  current_.reset();
}

void ContextCollector::enter(LookedAt window) {
  current_.emplace();
  current_->place = std::move(window);
  // What it showed then may do until it is read again.
  if (auto lines = memory_.returnedTo(current_->place.key(), s_.loop.now()))
    current_->lines = std::move(*lines);
}

bool ContextCollector::isStale() const {
  if (!current_ || !current_->readAt) return true;
  return s_.loop.now() - *current_->readAt >= (current_->wasPictured ? freshPicture : fresh);
}

void ContextCollector::readFocused() {
  const Wanted now = wanted();
  current_->isReading = true;
  if (!now.screen && !now.recent) return readBeside();
  reading_ = reader_.readFocused(current_->place, now.screen, [this](WindowReading reading) {
    auto lines = contextLines(reading.pieces);
    const bool isNew = lines != current_->lines;
    current_->lines = std::move(lines);
    current_->ofField = contextLines(reading.ofField);
    current_->wasPictured = reading.isPicture;
    current_->readAt = s_.loop.now();
    if (isNew) arrived();
    readBeside();
  });
}

void ContextCollector::readBeside() {
  current_->readAt = s_.loop.now();
  current_->isReading = wanted().beside;
  if (!current_->isReading) return;
  reading_ = reader_.readBeside(current_->place, [this](std::vector<std::vector<PlacedText>> windows) {
    current_->isReading = false;
    for (auto& pieces : windows) pieces = contextLines(pieces);
    std::erase_if(windows, [](const auto& lines) { return lines.empty(); });
    if (windows == current_->beside) return;
    current_->beside = std::move(windows);
    arrived();
  });
}

void ContextCollector::arrived() {
  if (std::exchange(wasGathered_, false) && changed_) changed_();
}

// Some applications change their window without a word.
void ContextCollector::noticeWindow(const FieldSnapshot& snapshot) {
  if (titleThen_ && *titleThen_ != snapshot.windowTitle) hasMoved_ = true;
  if (!hasMoved_) titleThen_ = snapshot.windowTitle;
}

// Another window may have taken the place of the one that was read, and not be read yet.
bool ContextCollector::isAbout(const FieldSnapshot& snapshot) const {
  return current_ && !hasMoved_ && current_->place.app.bundleID == snapshot.bundleID;
}

PromptContext ContextCollector::gather(const FieldSnapshot& snapshot) {
  PromptContext context;
  context.appName = snapshot.appName;
  context.windowTitle = snapshot.windowTitle.value_or("");
  context.domain = snapshot.domain.value_or("");
  context.writerName = user_.fullName;
  context.now = text::longDate(s_.loop.wallNow(), user_.locale, user_.timeZone);
  if (snapshot.isSecure || s_.secureInput.isOn()) return context;

  noticeWindow(snapshot);
  const Wanted now = wanted();
  const std::string ownText = snapshot.before + snapshot.after;
  const bool isHere = isAbout(snapshot);
  const std::vector<PlacedText> here = isHere ? current_->lines : std::vector<PlacedText>();
  if (now.screen)
    context.screenText = nearestLines(withoutOwnText(here, ownText), placeOf(snapshot), screenLimit);
  if (now.beside && isHere) context.nearbyText = besideText(current_->beside);
  if (now.recent)
    context.recentText =
        firstLines(withoutOwnText(memory_.lines(here, s_.loop.now()), ownText), windowsLimit);
  if (now.clipboard && clipboard_) context.clipboard = usefulCopy(clipboard_->text(), ownText, copyLimit);
  wasGathered_ = true;
  if (now.anyWindow() && (!isHere || isStale())) look_ = s_.loop.after(settle, [this] { lookAround(); });
  return context;
}

}  // namespace nimbletype
