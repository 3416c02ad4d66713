#include "input/context/surroundings_reader.h"

#include <algorithm>
#include <utility>

#include "input/field/field_role.h"

namespace nimbletype {
namespace {

constexpr std::size_t mostWindows = 12;  // of one application

bool takesText(const AXElement& element) {
  const auto values = element.readBriefly({{"AXRole", {}}, {"AXIsSettable:AXValue", {}}});
  const FieldRole role = fieldRole(valueAs<std::string>(values[0]).value_or(""));
  if (role == FieldRole::dependsOnValue) return valueAs<bool>(values[1]).value_or(false);
  return role != FieldRole::notAField;
}

}  // namespace

std::string LookedAt::key() const {
  return std::to_string(app.processID) + ":" + std::to_string(window.ref()->hash()) + ":" + title;
}

SurroundingsReader::SurroundingsReader(const Services& services, MayRead mayRead)
    : s_(services), mayRead_(std::move(mayRead)), reader_(services.loop) {}

bool SurroundingsReader::mayRead(const ScreenWindow& window) const {
  return mayRead_(window.app) && !isPrivateTitle(window.title) && !isSilent(window.app.processID);
}

bool SurroundingsReader::mayReadFrontmost() const {
  const auto app = s_.workspace.frontmost();
  return !app || mayRead_(*app);
}

bool SurroundingsReader::isSilent(std::int64_t processID) const {
  const auto found = silentSince_.find(processID);
  return found != silentSince_.end() && s_.loop.now() - found->second < silence;
}

void SurroundingsReader::note(std::int64_t processID, const WindowReading& reading) {
  if (reading.isAnswered)
    silentSince_.erase(processID);
  else
    silentSince_[processID] = s_.loop.now();
}

std::optional<LookedAt> SurroundingsReader::lookedAt() {
  auto app = s_.workspace.frontmost();
  if (!app || !mayRead_(*app) || isSilent(app->processID)) return std::nullopt;
  const AXElement application(s_.accessibility, s_.accessibility.application(app->processID));
  const auto focus =
      application.readBriefly({{"AXRole", {}}, {"AXFocusedWindow", {}}, {"AXFocusedUIElement", {}}});
  if (application && focus[0] == AttributeValue()) silentSince_[app->processID] = s_.loop.now();
  LookedAt found{std::move(*app), application.neighbour(focus[1]), application.neighbour(focus[2]), {}, {}};
  if (!found.window) return std::nullopt;
  const auto values = found.window.readBriefly({{"AXTitle", {}}, {"AXFrame", {}}});
  found.title = valueAs<std::string>(values[0]).value_or("");
  found.frame = valueAs<TopLeftRect>(values[1]);
  if (isPrivateTitle(found.title)) return std::nullopt;
  if (found.field && !takesText(found.field)) found.field = {};
  return found;
}

Task SurroundingsReader::readFocused(const LookedAt& window, bool mayUsePicture, Done done) {
  const auto step = std::make_shared<Task>();
  *step = reader_.read(window.window, window.field,
                       [=, this, step = std::weak_ptr(step), done = std::move(done)](WindowReading reading) {
                         note(window.app.processID, reading);
                         const bool isEmpty = reading.pieces.empty() && reading.ofField.empty();
                         const auto picture = isEmpty && mayUsePicture ? pictured(window) : std::nullopt;
                         const auto running = step.lock();
                         if (!picture || !running) return done(std::move(reading));
                         *running = s_.screenReader.read(*picture, [done](std::vector<PlacedText> lines) {
                           done({std::move(lines), {}, true, true});
                         });
                       });
  return Task([step] { *step = Task(); });
}

// The picture of a window shows what lies in front of it as well.
std::optional<ScreenWindow> SurroundingsReader::pictured(const LookedAt& window) {
  if (!s_.screenReader.isPermitted()) return std::nullopt;
  const auto windows = s_.workspace.windows();
  const auto mayShow = [this](const ScreenWindow& w) { return mayRead_(w.app) && !isPrivateTitle(w.title); };
  const ScreenWindow* found = windowMatching(windows, window.app.processID, window.title, window.frame);
  if (!found || !mayShow(*found) || isCoveredBySecret(*found, windows, mayShow)) return std::nullopt;
  return *found;
}

AXElement SurroundingsReader::elementOf(const ScreenWindow& window) {
  Accessibility& accessibility = s_.accessibility;
  const AXElement application(accessibility, accessibility.application(window.app.processID));
  const auto answer = application.readBriefly({{"AXWindows", {}}});
  const auto list = valueAs<ObjectList>(answer[0]).value_or(ObjectList());
  for (std::size_t i = 0; i < std::min(list.size(), mostWindows); ++i) {
    const AXElement element = application.neighbour(list[i]);
    const auto values = element.readBriefly({{"AXTitle", {}}, {"AXFrame", {}}});
    const std::string title = valueAs<std::string>(values[0]).value_or("");
    const auto frame = valueAs<TopLeftRect>(values[1]);
    const bool isThis = windowMatching(std::span(&window, 1), window.app.processID, title, frame);
    if (isThis && (window.title.empty() || title == window.title))
      return isPrivateTitle(title) ? AXElement() : element;
  }
  return {};
}

struct SurroundingsReader::Chain {
  std::vector<ScreenWindow> left;  // to be read, the next one last
  std::vector<std::vector<PlacedText>> texts;
  BesideDone done;
  Task step;
};

Task SurroundingsReader::readBeside(const LookedAt& window, BesideDone done) {
  const auto chain = std::make_shared<Chain>();
  chain->done = std::move(done);
  const auto windows = s_.workspace.windows();
  std::vector<TopLeftRect> screens;
  for (const Screen& screen : s_.screens.all())
    screens.push_back(flipped(screen.frame, s_.screens.mainHeight()));
  const ScreenWindow* focused = windowMatching(windows, window.app.processID, window.title, window.frame);
  if (focused)
    chain->left = windowsBeside(
        *focused, windows, screens, [this](const ScreenWindow& w) { return mayRead(w); }, mostBeside);
  std::ranges::reverse(chain->left);
  chain->step = s_.loop.after(Milliseconds(0), [this, weak = std::weak_ptr(chain)] {
    if (const auto alive = weak.lock()) readNext(alive);
  });
  return Task([chain] { chain->step = Task(); });
}

void SurroundingsReader::readNext(const std::shared_ptr<Chain>& chain) {
  while (!chain->left.empty()) {
    const ScreenWindow window = std::move(chain->left.back());
    chain->left.pop_back();
    const AXElement element = elementOf(window);
    if (!element) continue;
    const std::weak_ptr<Chain> weak = chain;
    chain->step = reader_.read(element, {}, [this, weak, id = window.app.processID](WindowReading reading) {
      note(id, reading);
      const auto alive = weak.lock();
      if (!alive) return;
      alive->texts.push_back(std::move(reading.pieces));
      readNext(alive);
    });
    return;
  }
  chain->done(std::move(chain->texts));
}

}  // namespace nimbletype
