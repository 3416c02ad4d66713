#include "input/context/window_text.h"

#include <gtest/gtest.h>

namespace nimbletype {
namespace {

ScreenWindow window(std::uint64_t id, TopLeftRect frame, std::string title = "T", std::int64_t process = 1) {
  return {id, {process, "app", "App", {}}, std::move(title), frame};
}

bool all(const ScreenWindow&) {
  return true;
}

TEST(WindowText, KnowsWhatElementsAreGoodFor) {
  using enum ElementUse;
  const struct {
    std::string_view role, subrole;
    ElementUse expected;
  } cases[] = {{"AXStaticText", "", value},     {"AXGroup", "", container},
               {"AXTextArea", "", textArea},    {"AXButton", "", skip},
               {"AXSecureTextField", "", skip}, {"AXTextField", "AXSecureTextField", skip},
               {"AXToolbar", "", skip},         {"AXHeading", "", title}};
  for (const auto& c : cases) EXPECT_EQ(useOf(c.role, c.subrole), c.expected) << c.role;
}

TEST(WindowText, TakesTheLinesNearestToThePlace) {
  const std::vector<PlacedText> lines{{"far above", {0, 0, 100, 20}},
                                      {"just above", {0, 80, 100, 20}},
                                      {"beside it", {300, 100, 100, 20}},
                                      {"just below", {0, 120, 100, 20}},
                                      {"far below", {0, 300, 100, 20}}};
  const TopLeftRect caret{50, 100, 1, 20};
  struct Case {
    std::optional<TopLeftRect> place;
    std::size_t limit;
    std::string expected;
  };
  for (const auto& c : {Case{caret, 21, "just above\njust below"}, Case{caret, 20, "just above"},
                        Case{caret, 4, "just"}, Case{caret, 31, "just above\nbeside it\njust below"},
                        Case{std::nullopt, 20, "just below\nfar below"}, Case{caret, 0, ""}})
    EXPECT_EQ(nearestLines(lines, c.place, c.limit), c.expected) << c.limit;
  EXPECT_EQ(firstLines(lines, 20), "far above\njust above");
  EXPECT_EQ(nearestLines({}, caret, 100), "");
}

TEST(WindowText, KnowsWindowsThatLeaveNoTraces) {
  for (const char* title :
       {"Bank – Private Browsing", "New Incognito Tab - Chromium", "News – [InPrivate] – Edge",
        "Wetter — Privater Modus", "Météo — Navigation privée"})
    EXPECT_TRUE(isPrivateTitle(title)) << title;
  for (const char* title : {"", "Privacy policy", "The private sector"})
    EXPECT_FALSE(isPrivateTitle(title)) << title;
}

TEST(WindowText, FindsTheWindowsThatCanBeSeenBesideOne) {
  const std::vector<TopLeftRect> screens{{0, 0, 1000, 800}, {1000, 0, 1000, 800}};
  const auto focused = window(1, {0, 0, 400, 800});
  const std::vector<ScreenWindow> windows{focused,
                                          window(2, {400, 0, 600, 400}),
                                          window(3, {0, 0, 390, 700}),      // under the focused one
                                          window(4, {1100, 0, 600, 400}),   // on the other screen
                                          window(5, {400, 500, 100, 100}),  // a palette
                                          window(6, {400, 100, 600, 700}),  // half under the second
                                          window(7, {300, 0, 700, 800})};   // under all of them
  const auto ids = [&](const WindowTest& mayRead, std::size_t most) {
    std::vector<std::uint64_t> found;
    for (const auto& w : windowsBeside(focused, windows, screens, mayRead, most)) found.push_back(w.id);
    return found;
  };
  EXPECT_EQ(ids(all, 5), (std::vector<std::uint64_t>{2, 6}));
  EXPECT_EQ(ids(all, 1), (std::vector<std::uint64_t>{2}));
  EXPECT_EQ(ids([](const auto& w) { return w.id != 2; }, 5), (std::vector<std::uint64_t>{6}));
}

TEST(WindowText, NoticesASecretInFront) {
  const std::vector<ScreenWindow> windows{window(1, {300, 0, 300, 300}), window(2, {0, 0, 400, 400}),
                                          window(3, {0, 0, 200, 200})};
  const auto secret = [](std::uint64_t id) { return [id](const ScreenWindow& w) { return w.id != id; }; };
  EXPECT_TRUE(isCoveredBySecret(windows[1], windows, secret(1)));
  EXPECT_FALSE(isCoveredBySecret(windows[1], windows, secret(3)));  // it lies behind
  EXPECT_FALSE(isCoveredBySecret(windows[2], windows, secret(1)));  // it lies beside
}

TEST(WindowText, MatchesByTitleAndPlace) {
  const std::vector<ScreenWindow> windows{
      window(1, {0, 0, 400, 400}, "Inbox"), window(2, {500, 0, 400, 400}, "Inbox"),
      window(3, {500, 0, 400, 400}, ""), window(4, {0, 0, 400, 400}, "Inbox", 2)};
  struct Case {
    std::int64_t process;
    std::string title;
    std::optional<TopLeftRect> frame;
    std::uint64_t expected;  // 0 for none
  };
  for (const auto& c :
       {Case{1, "Inbox", TopLeftRect{510, -20, 390, 420}, 2}, Case{1, "Inbox", std::nullopt, 1},
        Case{1, "Sent", TopLeftRect{500, 0, 400, 400}, 2}, Case{1, "Sent", std::nullopt, 0},
        Case{2, "Inbox", std::nullopt, 4}, Case{1, "Sent", TopLeftRect{50, 300, 90, 90}, 0}}) {
    const ScreenWindow* found = windowMatching(windows, c.process, c.title, c.frame);
    EXPECT_EQ(found ? found->id : 0, c.expected) << c.title;
  }
}

}  // namespace
}  // namespace nimbletype
