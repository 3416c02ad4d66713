#include "input/context/window_text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>

#include "text/text.h"

namespace nimbletype {
namespace {

struct RoleUse {
  std::string_view role;
  ElementUse use;
};
constexpr std::array uses{
    RoleUse{"AXStaticText", ElementUse::value},
    RoleUse{"AXHeading", ElementUse::title},
    RoleUse{"AXLink", ElementUse::title},
    RoleUse{"AXCell", ElementUse::title},
    RoleUse{"AXTextArea", ElementUse::textArea},
    RoleUse{"AXTextField", ElementUse::textArea},
    RoleUse{"AXSecureTextField", ElementUse::skip},
    RoleUse{"AXMenuBar", ElementUse::skip},
    RoleUse{"AXMenu", ElementUse::skip},
    RoleUse{"AXMenuItem", ElementUse::skip},
    RoleUse{"AXMenuBarItem", ElementUse::skip},
    RoleUse{"AXMenuButton", ElementUse::skip},
    RoleUse{"AXToolbar", ElementUse::skip},
    RoleUse{"AXButton", ElementUse::skip},
    RoleUse{"AXPopUpButton", ElementUse::skip},
    RoleUse{"AXCheckBox", ElementUse::skip},
    RoleUse{"AXRadioButton", ElementUse::skip},
    RoleUse{"AXRadioGroup", ElementUse::skip},
    RoleUse{"AXDisclosureTriangle", ElementUse::skip},
    RoleUse{"AXScrollBar", ElementUse::skip},
    RoleUse{"AXSlider", ElementUse::skip},
    RoleUse{"AXIncrementor", ElementUse::skip},
    RoleUse{"AXImage", ElementUse::skip},
    RoleUse{"AXHelpTag", ElementUse::skip},
    RoleUse{"AXComboBox", ElementUse::skip},
    RoleUse{"AXSearchField", ElementUse::skip},
    RoleUse{"AXProgressIndicator", ElementUse::skip},
    RoleUse{"AXRuler", ElementUse::skip},
};

// Browsers say it in their own words and in the user's language.
constexpr std::array privateMarks{"incognito",
                                  "inprivate",
                                  "private browsing",
                                  "(private)",
                                  "private window",
                                  "inkognito",
                                  "privater modus",
                                  "privates fenster",
                                  "navigation privée",
                                  "navegación privada",
                                  "incógnito",
                                  "navigazione anonima",
                                  "navigazione in incognito",
                                  "navegação privada",
                                  "navegação anônima",
                                  "プライベート",
                                  "シークレット",
                                  "无痕",
                                  "隐私浏览"};

constexpr double leastWidth = 200, leastHeight = 120, leastVisible = 0.3;
constexpr int samples = 10;              // in each direction
constexpr double frameSlack = 40;        // title bars and shadows count on one side only
constexpr double sidewaysWeight = 0.25;  // text below one another belongs together

bool contains(const TopLeftRect& r, double x, double y) {
  return x >= r.x && x < r.right() && y >= r.y && y < r.bottom();
}

double outside(double from, double to, double low, double high) {
  return std::max({0.0, low - to, from - high});
}

double distance(const TopLeftRect& line, const TopLeftRect& place) {
  return outside(line.y, line.bottom(), place.y, place.bottom()) +
         sidewaysWeight * outside(line.x, line.right(), place.x, place.right());
}

// Takes lines in this order while they fit; the first one is cut to fit.
std::string joinedWithin(std::span<const PlacedText> lines, std::span<const std::size_t> order,
                         std::size_t limit) {
  std::vector<std::size_t> taken;
  std::size_t used = 0;
  for (const std::size_t i : order) {
    const std::size_t length = text::characterCount(lines[i].text) + (taken.empty() ? 0 : 1);
    if (used + length > limit && !taken.empty()) break;
    taken.push_back(i);
    used += length;
    if (used >= limit) break;
  }
  std::ranges::sort(taken);
  std::string joined;
  for (const std::size_t i : taken) joined += (joined.empty() ? "" : "\n") + lines[i].text;
  return std::string(text::firstCharacters(joined, limit));
}

std::vector<std::size_t> inOrder(std::size_t count) {
  std::vector<std::size_t> order(count);
  std::iota(order.begin(), order.end(), std::size_t{0});
  return order;
}

double offset(const TopLeftRect& a, const TopLeftRect& b) {
  return std::max({std::abs(a.x - b.x), std::abs(a.y - b.y), std::abs(a.right() - b.right()),
                   std::abs(a.bottom() - b.bottom())});
}

}  // namespace

ElementUse useOf(std::string_view role, std::string_view subrole) {
  if (subrole == "AXSecureTextField" || subrole == "AXSearchField") return ElementUse::skip;
  const auto* found = std::ranges::find(uses, role, &RoleUse::role);
  return found == uses.end() ? ElementUse::container : found->use;
}

std::string nearestLines(std::span<const PlacedText> lines, const std::optional<TopLeftRect>& place,
                         std::size_t limit) {
  auto order = inOrder(lines.size());
  if (place)
    std::ranges::stable_sort(order, {}, [&](std::size_t i) { return distance(lines[i].frame, *place); });
  else
    std::ranges::reverse(order);
  return joinedWithin(lines, order, limit);
}

std::string firstLines(std::span<const PlacedText> lines, std::size_t limit) {
  return joinedWithin(lines, inOrder(lines.size()), limit);
}

bool isPrivateTitle(std::string_view title) {
  const std::string lower = text::lowercased(title);
  return std::ranges::any_of(privateMarks,
                             [&](const char* mark) { return lower.find(mark) != std::string::npos; });
}

double visibleShare(const TopLeftRect& window, std::span<const TopLeftRect> inFront) {
  int visible = 0;
  for (int row = 0; row < samples; ++row)
    for (int column = 0; column < samples; ++column) {
      const double x = window.x + window.width * (column + 0.5) / samples;
      const double y = window.y + window.height * (row + 0.5) / samples;
      visible += std::ranges::none_of(inFront, [&](const TopLeftRect& r) { return contains(r, x, y); });
    }
  return static_cast<double>(visible) / (samples * samples);
}

std::vector<ScreenWindow> windowsBeside(const ScreenWindow& focused, std::span<const ScreenWindow> windows,
                                        std::span<const TopLeftRect> screens, const WindowTest& mayRead,
                                        std::size_t most) {
  const auto screenOf = [&](const TopLeftRect& r) {
    return std::ranges::find_if(
        screens, [&](const auto& s) { return contains(s, r.x + r.width / 2, r.y + r.height / 2); });
  };
  std::vector<ScreenWindow> beside;
  std::vector<TopLeftRect> inFront;
  for (const ScreenWindow& window : windows) {
    const TopLeftRect& frame = window.frame;
    const bool isCandidate = window.id != focused.id && frame.width >= leastWidth &&
                             frame.height >= leastHeight && screenOf(frame) == screenOf(focused.frame);
    if (isCandidate && beside.size() < most && mayRead(window) &&
        visibleShare(frame, inFront) >= leastVisible)
      beside.push_back(window);
    inFront.push_back(frame);
  }
  return beside;
}

bool isCoveredBySecret(const ScreenWindow& window, std::span<const ScreenWindow> windows,
                       const WindowTest& mayRead) {
  for (const ScreenWindow& other : windows) {
    if (other.id == window.id) return false;
    if (!mayRead(other) && visibleShare(window.frame, std::span(&other.frame, 1)) < 1) return true;
  }
  return false;
}

const ScreenWindow* windowMatching(std::span<const ScreenWindow> windows, std::int64_t processID,
                                   std::string_view title, const std::optional<TopLeftRect>& frame) {
  const ScreenWindow* best = nullptr;
  double bestScore = 0;
  for (const ScreenWindow& window : windows) {
    if (window.app.processID != processID) continue;
    const bool sameTitle = !title.empty() && window.title == title;
    const double away = frame ? offset(window.frame, *frame) : 2 * frameSlack;
    if (!sameTitle && away > frameSlack) continue;
    // Titles decide; among equal ones the place does.
    const double score = (sameTitle ? 0 : 100'000) + away;
    if (!best || score < bestScore) best = &window, bestScore = score;
  }
  return best;
}

}  // namespace nimbletype
