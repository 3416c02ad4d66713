#include "input/source/ax_field_source.h"

#include <gmock/gmock.h>

#include <algorithm>

#include "tests/input/source/field_source_fixture.h"
#include "text/text.h"

namespace nimbletype {
namespace {

using std::chrono_literals::operator""ms;
using testing::ElementsAre;
using testing::IsEmpty;

class AXFieldSourceTest : public FieldSourceFixture {
 protected:
  // As the engine does: reads whenever something has changed.
  void readAtEachChange() {
    source_.onChange([this](Change change) {
      changes_.push_back(change);
      source_.snapshot();
    });
  }
  std::vector<Change> changesWithin(int milliseconds) {
    changes_.clear();
    loop_.advance(Milliseconds(milliseconds));
    return std::exchange(changes_, {});
  }
};

TEST_F(AXFieldSourceTest, ReadsAFieldWhole) {
  const auto field = open(add("AXTextArea", u"Dear Ann,\nthank you. Bye"));
  ax_.at(field).selection = {18, 2};  // "u."
  FieldSnapshot expected;
  expected.fieldKey = "org.editor:" + std::to_string(field->hash());
  expected.bundleID = "org.editor";
  expected.appName = "Editor";
  expected.role = "AXTextArea";
  expected.before = "Dear Ann,\nthank yo";
  expected.after = " Bye";
  expected.selectionLength = 2;
  expected.caretRect = TopLeftRect{104 + 8 * 8, 220, 1, 16};
  expected.lineStartX = 104;
  expected.fieldFrame = TopLeftRect{100, 200, 400, 300};
  expected.fontName = "Fixed";
  expected.fontSize = 13;
  expected.windowTitle = "Letter";
  EXPECT_EQ(read(), expected);
  EXPECT_EQ(source_.whyNoField(), std::nullopt);
}

TEST_F(AXFieldSourceTest, CutsLongTextAroundTheSelection) {
  const auto field = open(add("AXTextArea", std::u16string(5000, u'a') + std::u16string(4000, u'b')));
  ax_.at(field).selection = {5000, 1000};
  const FieldSnapshot snapshot = read();
  EXPECT_EQ(snapshot.before, std::string(3000, 'a'));
  EXPECT_EQ(snapshot.after, std::string(500, 'b'));
  EXPECT_EQ(snapshot.selectionLength, 1000);
}

TEST_F(AXFieldSourceTest, PlacesTheCaretByTheBoxesThatAreGiven) {
  const auto field = open(add("AXTextArea", u"one\n"));
  EXPECT_EQ(read().caretRect, (TopLeftRect{104, 220, 1, 16}));
  EXPECT_EQ(read().lineStartX, 104);
  ax_.at(field).text = u"one";
  ax_.at(field).selection = {3, 0};
  ax_.at(field).lies = [](const AttributeRead& read) -> std::optional<AttributeValue> {
    const auto* range = std::get_if<TextRange>(&read.parameter);
    if (read.attribute == "AXBoundsForRange" && range->length == 0) return TopLeftRect{};
    return std::nullopt;
  };
  EXPECT_EQ(read().caretRect, (TopLeftRect{104 + 3 * 8, 204, 1, 16})) << "behind the last character";
  // Attributed text will do where there is no plain one.
  ax_.at(field).failing = {"AXStringForRange"};
  ax_.at(field).attributes["AXAttributedStringForRange"] = std::string("two");
  EXPECT_EQ(read().before, "two");
}

TEST_F(AXFieldSourceTest, SaysWhyThereIsNoField) {
  EXPECT_EQ(refusal(), "no app: nothing focused");
  open(add("AXButton"));
  EXPECT_EQ(refusal(), "org.editor: focused AXButton isn't a text field");
  ax_.focus(editor.processID, nullptr);
  EXPECT_EQ(refusal(), "org.editor: nothing focused");
  ax_.focus(editor.processID, add("AXStaticText", u"read only"));
  EXPECT_EQ(refusal(), "org.editor: focused AXStaticText isn't a text field");
  const auto field = add("AXTextArea", u"text");
  ax_.at(field).failing = {"AXSelectedTextRange"};
  ax_.focus(editor.processID, field);
  EXPECT_EQ(refusal(), "org.editor: focused AXTextArea has no caret position");
  ax_.focus(editor.processID, add("AXGroup", u"a value that can be set"));
  EXPECT_EQ(read().role, "AXGroup");
  EXPECT_EQ(source_.whyNoField(), std::nullopt);
}

TEST_F(AXFieldSourceTest, NeverAsksForTheTextOfASecureField) {
  const auto byRole = add("AXSecureTextField", u"secret"), bySubrole = add("AXTextField", u"secret");
  ax_.at(bySubrole).attributes["AXSubrole"] = std::string("AXSecureTextField");
  const auto ordinary = add("AXTextField", u"secret");
  open(byRole);
  for (const auto& field : {byRole, bySubrole, ordinary}) {
    ax_.focus(editor.processID, field);
    secureInput_.on = field == ordinary;
    settle();
    const FieldSnapshot snapshot = read();
    EXPECT_TRUE(snapshot.isSecure);
    EXPECT_EQ(snapshot.before + snapshot.after, "");
    EXPECT_EQ(snapshot.caretRect, std::nullopt);
    const std::string role = field == byRole ? "AXSecureTextField" : "AXTextField";
    EXPECT_EQ(source_.whyNoField(), "org.editor: focused " + role + " won't share its text");
  }
  EXPECT_THAT(ax_.askedTexts, IsEmpty());

  secureInput_.on = false;
  EXPECT_EQ(read().before, "secret");
  EXPECT_EQ(source_.whyNoField(), std::nullopt);
}

TEST_F(AXFieldSourceTest, TellsTheStrongestOfTheChangesOfATurn) {
  const auto field = open(add("AXTextArea", u"one"));
  EXPECT_THAT(takeChanges(), ElementsAre(Change::app));
  ax_.edit(editor.processID, field, u"one two", {7, 0});
  EXPECT_THAT(takeChanges(), ElementsAre(Change::value));
  const auto second = add("AXTextField", u"x");
  ax_.edit(editor.processID, field, u"one", {3, 0});
  ax_.focus(editor.processID, second);
  ax_.tell(editor.processID, "AXFocusedWindowChanged", window_);
  EXPECT_THAT(takeChanges(), ElementsAre(Change::focus));
  ax_.edit(editor.processID, second, u"xy", {2, 0});
  EXPECT_THAT(takeChanges(), ElementsAre(Change::value));
  ax_.edit(editor.processID, field, u"not watched any more", {0, 0});
  EXPECT_THAT(takeChanges(), IsEmpty());
  addApplication(other);
  ax_.edit(editor.processID, second, u"xyz", {3, 0});
  workspace_.bringToFront(other);
  EXPECT_THAT(takeChanges(), ElementsAre(Change::app));
  ax_.focus(editor.processID, field);
  EXPECT_THAT(takeChanges(), IsEmpty());
}

TEST_F(AXFieldSourceTest, NoticesAFocusThatMovedWithoutAWord) {
  open(add("AXTextArea", u"one"));
  const auto second = add("AXTextField", u"two");
  ax_.at(ax_.application(editor.processID)).attributes["AXFocusedUIElement"] = second;
  EXPECT_EQ(read().before, "two");
  takeChanges();
  ax_.edit(editor.processID, second, u"two!", {4, 0});
  EXPECT_THAT(takeChanges(), ElementsAre(Change::value));
}

// As when a menu bar flashes, or a key is grabbed.
TEST_F(AXFieldSourceTest, AFocusLostAndFoundIsNoLoss) {
  const auto field = open(add("AXTextArea", u"text"));
  read();
  ax_.focus(editor.processID, nullptr);
  EXPECT_THAT(changesWithin(10), IsEmpty());
  ax_.focus(editor.processID, field);
  EXPECT_THAT(changesWithin(0), ElementsAre(Change::focus));
  read();

  ax_.focus(editor.processID, nullptr);
  EXPECT_THAT(changesWithin(50), ElementsAre(Change::focus));
  EXPECT_FALSE(source_.snapshot());
  workspace_.bringToFront(other);
  settle();
  EXPECT_EQ(changes_.back(), Change::app);
}

TEST_F(AXFieldSourceTest, LooksAgainWhenAnApplicationWasTooBusyToAnswer) {
  const auto field = open(add("AXTextArea", u"text"));
  readAtEachChange();
  read();
  const auto answers = ax_.at(field);
  ax_.at(field).attributes.clear();  // answers nothing
  EXPECT_FALSE(source_.snapshot());
  ax_.at(field) = answers;
  EXPECT_THAT(changesWithin(200), ElementsAre(Change::value));
  read();
  ax_.at(field).attributes.clear();
  source_.snapshot();
  EXPECT_EQ(changesWithin(10'000).size(), 3U) << "what is no field is not looked at for ever";
}

TEST_F(AXFieldSourceTest, LooksAgainWhileAFieldScrollsToItsCaret) {
  const auto field = open(add("AXTextArea", u"one line"));
  ax_.at(field).textOrigin.y += 300;  // below the field's frame
  read();
  EXPECT_THAT(changesWithin(50), ElementsAre(Change::value));
  ax_.at(field).textOrigin.y -= 300;
  read();
  EXPECT_THAT(changesWithin(1000), IsEmpty());

  ax_.at(field).textOrigin.y += 300;
  readAtEachChange();
  read();
  EXPECT_EQ(changesWithin(10'000).size(), 4U) << "a frame that is told wrongly is not looked at for ever";
}

TEST_F(AXFieldSourceTest, ReadsWindowAndPageOncePerFocus) {
  const auto field = open(add("AXTextArea", u"one"));
  EXPECT_EQ(read().windowTitle, "Letter");
  const int batches = ax_.batches;
  read();
  EXPECT_LE(ax_.batches - batches, 3);  // who is focused, the field's state, its text
  ax_.at(window_).attributes["AXTitle"] = std::string("Letter 2");
  ax_.tell(editor.processID, "AXFocusedWindowChanged", window_);
  settle();
  EXPECT_EQ(read().windowTitle, "Letter 2");
  EXPECT_EQ(read().fieldKey, "org.editor:" + std::to_string(field->hash()));
}

TEST_F(AXFieldSourceTest, AttachesOnALaterLook) {
  workspace_.bringToFront(editor);
  source_.start();
  EXPECT_THAT(takeChanges(), ElementsAre(Change::app));
  loop_.advance(400ms);
  addApplication(editor);
  ax_.focus(editor.processID, add("AXTextArea", u"late"));
  loop_.advance(600ms);
  EXPECT_THAT(takeChanges(), ElementsAre(Change::focus));
  EXPECT_THAT(log_.lines, ElementsAre(RecordingSystemLog::Line{
                              "input", "attached to Editor on a later look, after 700 ms"}));
  EXPECT_EQ(read().before, "late");
  loop_.advance(100'000ms);
  EXPECT_EQ(log_.lines.size(), 1u);
}

TEST_F(AXFieldSourceTest, StopsLookingForAnApplicationThatWentToTheBack) {
  workspace_.bringToFront(editor);
  source_.start();
  addApplication(other);
  ax_.focus(other.processID, add("AXTextArea", u"other"));
  workspace_.bringToFront(other);
  addApplication(editor);
  ax_.focus(editor.processID, add("AXTextArea", u"late"));
  loop_.advance(100'000ms);
  EXPECT_THAT(log_.lines, IsEmpty());
  EXPECT_EQ(read().before, "other");
  workspace_.bringToFront({});
  EXPECT_EQ(refusal(), "no app: nothing focused");
}

TEST_F(AXFieldSourceTest, KeepsOnAfterAnApplicationHung) {
  const auto field = open(add("AXTextArea", u"one"));
  ax_.hangs = true;
  EXPECT_EQ(refusal(), "org.editor: nothing focused");
  EXPECT_EQ(ax_.secondsLost, Accessibility::messagingTimeout);
  ax_.hangs = false;
  EXPECT_EQ(read().before, "one");
  takeChanges();
  ax_.edit(editor.processID, field, u"one!", {4, 0});
  EXPECT_THAT(takeChanges(), ElementsAre(Change::value));
}

TEST_F(AXFieldSourceTest, TurnsOnTheContentOfPagesOncePerProcess) {
  const struct {
    RunningApp app;
    bool refuses;
    std::vector<std::string> written;
  } cases[] = {
      {{50, "com.google.Chrome", "Chrome", {}}, false, {"AXManualAccessibility"}},
      {{51, "com.brave.Browser", "Brave", {}}, true, {"AXManualAccessibility", "AXEnhancedUserInterface"}},
      {{52, "org.editor", "Editor", {}}, false, {}},
  };
  source_.start();
  for (const auto& c : cases) {
    addApplication(c.app);
    const auto application = ax_.application(c.app.processID);
    ax_.at(application).refusesWrites = c.refuses;
    ax_.at(application).attributes["AXFocusedUIElement"] = window_;
    ax_.written.clear();
    workspace_.bringToFront(c.app);
    workspace_.bringToFront({});
    if (!c.refuses) workspace_.bringToFront(c.app);
    std::vector<std::string> written;
    for (const auto& w : ax_.written) written.push_back(w.attribute);
    EXPECT_EQ(written, c.written) << c.app.bundleID;
  }
}

TEST_F(AXFieldSourceTest, InsertsByTheMethodAskedForWhereTheTextWasMeantToGo) {
  const RecordingSystemLog::Line moved{"input", "the focus has moved: nothing is inserted"};
  const auto field = open(add("AXTextArea", u"one")), second = add("AXTextField", u"two");
  addApplication(other);
  ax_.focus(other.processID, add("AXTextField", u"three"));
  const struct {
    const char* why;
    std::function<void()> happens;
    bool inserts, hasElement;
  } cases[] = {{"nothing moved", [] {}, true, true},
               {"another field", [&] { ax_.focus(editor.processID, second); }, false, false},
               {"another application", [&] { workspace_.bringToFront(other); }, false, false},
               {"the application does not tell", [&] { ax_.focus(editor.processID, nullptr); }, true, false}};
  using enum InsertionMethod;
  source_.insert("xyz", typing);
  source_.deleteBackwards(2);
  settle();
  EXPECT_EQ(poster_.text(), "x");
  for (const auto& c : cases)
    for (const auto method : {typing, accessibility, InsertionMethod::paste}) {
      SCOPED_TRACE(c.why);
      workspace_.bringToFront(editor);
      ax_.focus(editor.processID, field);
      loop_.advance(1000ms);
      read();
      poster_.posted.clear();
      pasteboard_.lent.clear();
      log_.lines.clear();
      ax_.at(field).text = u"";
      ax_.at(field).selection = {};
      c.happens();
      source_.insert("x", method);
      loop_.advance(100ms);
      const bool writes = c.hasElement && method == accessibility;
      EXPECT_EQ(*ax_.at(field).text == u"x", writes);
      EXPECT_EQ(poster_.text() == "x", c.inserts && !writes && method != InsertionMethod::paste);
      EXPECT_EQ(!pasteboard_.lent.empty(), c.inserts && method == InsertionMethod::paste);
      EXPECT_EQ(std::ranges::count(log_.lines, moved), !c.inserts);
    }
}

TEST_F(AXFieldSourceTest, PastesNothingOnceTheFocusHasMoved) {
  open(add("AXTextArea", u"one"));
  read();
  pasteboard_.copy({{{"text", "theirs"}}});
  pasteboard_.ownerTakes = 200ms;
  source_.insert("x", InsertionMethod::paste);
  loop_.advance(100ms);
  ax_.focus(editor.processID, add("AXTextField", u"two"));
  loop_.advance(1000ms);
  EXPECT_THAT(pasteboard_.lent, IsEmpty());
  EXPECT_THAT(poster_.posted, IsEmpty());
}

}  // namespace
}  // namespace nimbletype
