#include "input/context/context_collector.h"

#include <gmock/gmock.h>

#include <algorithm>

#include "platform/scripted/accessibility/scripted_accessibility.h"
#include "platform/scripted/desktop/scripted_screen_reader.h"
#include "platform/scripted/desktop/scripted_screens.h"
#include "platform/scripted/desktop/scripted_workspace.h"
#include "platform/scripted/keys/scripted_secure_input.h"
#include "platform/scripted/pasteboard/scripted_clipboard_text.h"
#include "platform/scripted/storage/memory_defaults_store.h"
#include "platform/scripted/system/virtual_main_loop.h"
#include "text/text.h"

namespace nimbletype {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

// A window of an application of its own, with a line of text for each that is given, and a field at its
// bottom.
struct OpenWindow {
  RunningApp app;
  ObjectRef application, window, field;
};

class ContextCollectorTest : public ::testing::Test {
 protected:
  ContextCollectorTest() {
    collector_.onChange([this] { ++told_; });
  }

  static ScriptedElement element(const std::string& role, TopLeftRect frame, const std::string& title = {}) {
    ScriptedElement made;
    made.attributes = {{"AXRole", role}, {"AXFrame", frame}};
    if (!title.empty()) made.attributes["AXTitle"] = title;
    return made;
  }

  ObjectRef addText(const ObjectRef& parent, const std::string& role, const std::string& text, double y) {
    ScriptedElement made = element(role, {0, y, 400, 20});
    made.attributes["AXValue"] = text;
    return ax_.addChild(parent, made);
  }

  OpenWindow open(std::int64_t process, const std::string& title, const std::vector<std::string>& lines,
                  TopLeftRect frame = {0, 0, 700, 800}) {
    OpenWindow made{
        {process, "app" + std::to_string(process), "App", {}}, ax_.addApplication(process), {}, {}};
    made.window = ax_.addChild(made.application, element("AXWindow", frame, title));
    for (std::size_t i = 0; i < lines.size(); ++i)
      addText(made.window, "AXStaticText", lines[i], 100 + 30 * static_cast<double>(i));
    ScriptedElement field = element("AXTextArea", {0, 700, 400, 60});
    field.text = text::toUtf16("Dear Anna, I am writing");
    made.field = ax_.addChild(made.window, field);
    ax_.at(made.application).attributes["AXFocusedWindow"] = made.window;
    ax_.at(made.application).attributes["AXFocusedUIElement"] = made.field;
    workspace_.onScreen.insert(workspace_.onScreen.begin(),
                               {static_cast<std::uint64_t>(process), made.app, title, frame});
    return made;
  }

  void goTo(const OpenWindow& window) {
    std::ranges::stable_partition(workspace_.onScreen, [&](const auto& w) { return w.app == window.app; });
    workspace_.bringToFront(window.app);
    collector_.focusMoved();
  }
  PromptContext gather(const OpenWindow& window) {
    FieldSnapshot snapshot;
    snapshot.bundleID = window.app.bundleID;
    snapshot.windowTitle = std::get<std::string>(ax_.at(window.window).attributes["AXTitle"]);
    snapshot.before = "Dear Anna, I am writing";
    snapshot.caretRect = TopLeftRect{100, 700, 1, 20};
    return collector_.gather(snapshot);
  }
  void wait(int ms) { loop_.advance(Milliseconds(ms)); }
  void visit(const OpenWindow& window, int ms = 500) {
    goTo(window);
    wait(ms);
  }
  bool wasAsked(const ObjectRef& element) {
    return std::ranges::any_of(ax_.askedTexts, [&](const auto& a) { return a.element->same(*element); });
  }

  VirtualMainLoop loop_;
  ScriptedAccessibility ax_{loop_};
  ScriptedWorkspace workspace_;
  ScriptedScreens screens_;
  ScriptedSecureInput secureInput_;
  ScriptedScreenReader picture_{loop_};
  ScriptedClipboardText clipboard_{loop_};
  MemoryDefaultsStore store_;
  Preferences prefs_{store_};
  std::string secretApp_ = "app66";
  ContextCollector collector_{{loop_, ax_, workspace_, screens_, secureInput_, picture_, &clipboard_},
                              prefs_,
                              {"Anna Writer", "en_US", "UTC"},
                              [this](const RunningApp& app) { return app.bundleID != secretApp_; }};
  int told_ = 0;
};

TEST_F(ContextCollectorTest, HandsOverWhatItsWindowShowsOnceThatIsRead) {
  const auto mail = open(1, "Inbox", {"Can you send the plan?", "Dear Anna, I am writing", "Reply"});
  addText(mail.window, "AXButton", "Send this message", 400);
  goTo(mail);
  const PromptContext early = gather(mail);
  EXPECT_EQ(early.screenText, "");
  EXPECT_EQ(early.writerName, "Anna Writer");
  EXPECT_EQ(early.now, "Friday 7 March 2025");
  EXPECT_EQ(ax_.batches, 0);  // a prompt waits for nothing
  wait(100);
  EXPECT_EQ(told_, 1);
  EXPECT_EQ(gather(mail).screenText, "Can you send the plan?");
}

TEST_F(ContextCollectorTest, ReadsAgainForAPromptAfterAWhileAndNotBefore) {
  const auto mail = open(1, "Inbox", {"Can you send the plan?"});
  visit(mail, 200);
  const int once = ax_.batches;
  for (int i = 0; i < 20; ++i) gather(mail), wait(100);
  EXPECT_EQ(ax_.batches, once);
  EXPECT_EQ(told_, 0);  // nothing that was not known to the first prompt
  addText(mail.window, "AXStaticText", "And the budget, please.", 300);
  wait(4000);
  EXPECT_EQ(gather(mail).screenText, "Can you send the plan?");
  wait(200);
  EXPECT_EQ(told_, 1);
  EXPECT_THAT(gather(mail).screenText, HasSubstr("budget"));
}

TEST_F(ContextCollectorTest, ReadsALargeWindowInSlicesUpToALimit) {
  const auto page = open(1, "Page", {});
  std::vector<ObjectRef> lines;
  for (int i = 0; i < 3000; ++i)
    lines.push_back(addText(page.window, "AXStaticText", "Line number " + std::to_string(i) + " of the page",
                            20 + i % 600));
  goTo(page);
  int most = 0;
  for (int ms = 0; ms < 2000; ++ms) {
    const int before = ax_.batches;
    wait(1);
    most = std::max(most, ax_.batches - before);
  }
  EXPECT_LE(most, 2 * WindowTextReader::nodesInSlice + 4);
  EXPECT_LE(ax_.batches, 2 * WindowTextReader::mostNodes + 10);
  EXPECT_TRUE(wasAsked(lines[100]));
  EXPECT_FALSE(wasAsked(lines[2999]));
  EXPECT_THAT(gather(page).screenText, HasSubstr("of the page"));
  EXPECT_LE(text::characterCount(gather(page).screenText), 900u);
}

TEST_F(ContextCollectorTest, LeavesAnApplicationAloneThatDoesNotAnswer) {
  const auto mail = open(1, "Inbox", {});
  for (int i = 0; i < 50; ++i)
    addText(mail.window, "AXStaticText", "Send plan " + std::to_string(i), 100 + 10 * i);
  visit(mail, 60);
  ax_.hangs = true;  // in the middle of a reading
  wait(500);
  EXPECT_GT(ax_.secondsLost, 0);
  EXPECT_LE(ax_.secondsLost, 0.1);
  const double lost = ax_.secondsLost;
  for (int i = 0; i < 10; ++i) goTo(mail), gather(mail), wait(1000);
  EXPECT_EQ(ax_.secondsLost, lost);
  ax_.hangs = false;
  wait(60'000);
  visit(mail, 200);
  EXPECT_THAT(gather(mail).screenText, HasSubstr("plan 49"));
}

TEST_F(ContextCollectorTest, NeverAsksForSecrets) {
  prefs_.contextNearbyWindows.set(true);
  picture_.permitted = true;
  const auto secretApp = open(66, "Vault", {"The password is hunter2"}, {710, 0, 700, 400});
  const auto secretPage = open(2, "Bank – Private Browsing", {"Your balance is low"}, {710, 410, 700, 400});
  const auto mail = open(1, "Inbox", {"Can you send the plan?"});
  ScriptedElement password = element("AXTextField", {0, 300, 200, 20}, "Password");
  password.attributes["AXSubrole"] = std::string("AXSecureTextField");
  password.text = u"hunter2 and more";
  const ObjectRef secretField = ax_.addChild(mail.window, password);
  for (const auto* window : {&secretApp, &secretPage, &mail}) visit(*window);
  const PromptContext context = gather(mail);
  EXPECT_EQ(context.screenText, "Can you send the plan?");
  EXPECT_EQ(context.nearbyText, "");
  EXPECT_EQ(context.recentText, "");
  for (const auto& secret : {secretField, secretApp.field, secretPage.field}) EXPECT_FALSE(wasAsked(secret));
  EXPECT_TRUE(picture_.seen.empty());

  secureInput_.on = true;
  const int batches = ax_.batches;
  visit(mail, 10'000);
  EXPECT_EQ(gather(mail).screenText, "");
  EXPECT_EQ(ax_.batches, batches);
}

TEST_F(ContextCollectorTest, RemembersWindowsLookedAtJustBefore) {
  const auto page = open(1, "Trip", {"The train leaves at nine.", "Seats are booked."});
  const auto mail = open(2, "Inbox", {"Can you send the plan?", "Seats are booked."});
  visit(page);
  visit(mail);
  EXPECT_EQ(gather(mail).recentText, "The train leaves at nine.");
  prefs_.contextRecent.set(false);
  prefs_.contextRecent.set(true);
  wait(500);
  EXPECT_EQ(gather(mail).recentText, "");
  visit(page);
  visit(mail, 4 * 60'000);
  EXPECT_THAT(gather(mail).recentText, HasSubstr("train"));
  wait(61'000);
  EXPECT_EQ(gather(mail).recentText, "");
}

TEST_F(ContextCollectorTest, ReadsUpToTwoWindowsBesideWhenThatIsWanted) {
  open(1, "Third", {"Notes of the third one"}, {1100, 450, 300, 400});
  open(2, "Second", {"Notes of the second one"}, {710, 450, 380, 400});
  const auto first = open(3, "First", {"Notes of the first one"}, {710, 0, 700, 400});
  // As far as lines are told by their place.
  for (const auto& child : std::get<ObjectList>(ax_.at(first.window).attributes["AXVisibleChildren"]))
    ax_.at(child).attributes.erase("AXFrame");
  const auto mail = open(4, "Inbox", {"Can you send the plan?"});
  visit(mail, 1000);
  EXPECT_EQ(gather(mail).nearbyText, "");
  EXPECT_EQ(workspace_.timesListed, 0);
  prefs_.contextNearbyWindows.set(true);
  wait(1000);
  EXPECT_THAT(gather(mail).nearbyText, HasSubstr("first one"));
  EXPECT_THAT(gather(mail).nearbyText, Not(HasSubstr("third one")));
}

TEST_F(ContextCollectorTest, ReadsNothingThatTheSettingsForbid) {
  for (auto* setting : {&prefs_.contextScreen, &prefs_.contextRecent}) setting->set(false);
  const auto mail = open(1, "Inbox", {"Can you send the plan?"});
  clipboard_.copy("copied text");
  visit(mail, 10'000);
  const PromptContext context = gather(mail);
  EXPECT_EQ(context.screenText + context.nearbyText + context.recentText + context.clipboard, "");
  EXPECT_EQ(ax_.batches, 0);
  EXPECT_EQ(clipboard_.timesRead, 0);
  EXPECT_TRUE(loop_.isIdle());
  prefs_.contextClipboard.set(true);
  clipboard_.copy("copied text");
  wait(1001);
  EXPECT_EQ(gather(mail).clipboard, "copied text");
  prefs_.contextScreen.set(true);
  wait(200);
  EXPECT_THAT(gather(mail).screenText, HasSubstr("plan"));
  prefs_.isEnabled.set(false);
  EXPECT_EQ(gather(mail).screenText + gather(mail).clipboard, "");
}

TEST_F(ContextCollectorTest, ReadsThePictureOfAWindowThatTellsNothing) {
  const auto game = open(1, "Board", {});
  ax_.at(game.field).text = u"";
  picture_.lines = {{"A line in the picture", {0, 100, 300, 20}}};
  visit(game, 1000);
  EXPECT_EQ(gather(game).screenText, "");
  EXPECT_TRUE(picture_.seen.empty());  // not permitted
  picture_.permitted = true;
  wait(5000);
  gather(game);
  wait(1000);
  EXPECT_EQ(gather(game).screenText, "A line in the picture");
  workspace_.onScreen.insert(workspace_.onScreen.begin(),
                             {66, {66, secretApp_, "Vault", {}}, "Vault", {100, 100, 200, 200}});
  wait(40'000);
  gather(game);
  wait(1000);
  EXPECT_EQ(picture_.seen.size(), 1u);  // a secret lies in front now
}

}  // namespace
}  // namespace nimbletype
