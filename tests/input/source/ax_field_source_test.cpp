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

class AXFieldSourceTest : public FieldSourceFixture {};

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

TEST_F(AXFieldSourceTest, PlacesTheCaretOnItsOwnLine) {
  open(add("AXTextArea", u"one\n"));
  FieldSnapshot snapshot = read();
  EXPECT_EQ(snapshot.caretRect, (TopLeftRect{104, 220, 1, 16}));
  EXPECT_EQ(snapshot.lineStartX, 104);
}

TEST_F(AXFieldSourceTest, FallsThroughToTheCharacterBeforeAZeroRectangle) {
  const auto field = open(add("AXTextField", u"one"));
  ax_.at(field).lies = [](const AttributeRead& read) -> std::optional<AttributeValue> {
    const auto* range = std::get_if<TextRange>(&read.parameter);
    if (read.attribute == "AXBoundsForRange" && range->length == 0) return TopLeftRect{};
    return std::nullopt;
  };
  EXPECT_EQ(read().caretRect, (TopLeftRect{104 + 3 * 8, 204, 1, 16}));
}

TEST_F(AXFieldSourceTest, TakesAttributedTextWhereThereIsNoPlainOne) {
  const auto field = open(add("AXTextArea", u"one"));
  ax_.at(field).failing = {"AXStringForRange"};
  ax_.at(field).attributes["AXAttributedStringForRange"] = std::string("one");
  EXPECT_EQ(read().before, "one");
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
  struct Case {
    ObjectRef field;
    bool secureInput;
    std::string reason;
  };
  open(byRole);
  for (const auto& c : {Case{byRole, false, "org.editor: focused AXSecureTextField won't share its text"},
                        Case{bySubrole, false, "org.editor: focused AXTextField won't share its text"},
                        Case{ordinary, true, "org.editor: focused AXTextField won't share its text"}}) {
    ax_.focus(editor.processID, c.field);
    secureInput_.on = c.secureInput;
    settle();
    const FieldSnapshot snapshot = read();
    EXPECT_TRUE(snapshot.isSecure);
    EXPECT_EQ(snapshot.before + snapshot.after, "");
    EXPECT_EQ(snapshot.caretRect, std::nullopt);
    EXPECT_EQ(source_.whyNoField(), c.reason);
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
  const auto loseFocus = [&] {
    ax_.focus(editor.processID, nullptr);
    loop_.advance(Milliseconds(10));
  };
  changes_.clear();
  loseFocus();
  EXPECT_TRUE(changes_.empty());
  ax_.focus(editor.processID, field);
  settle();
  EXPECT_EQ(changes_, std::vector{Change::focus});
  read();

  changes_.clear();
  loseFocus();
  loop_.advance(Milliseconds(40));
  EXPECT_EQ(changes_, std::vector{Change::focus});
  EXPECT_FALSE(source_.snapshot());
  workspace_.bringToFront(other);
  settle();
  EXPECT_EQ(changes_.back(), Change::app);
}

TEST_F(AXFieldSourceTest, LooksAgainWhenAnApplicationWasTooBusyToAnswer) {
  const auto field = open(add("AXTextArea", u"text"));
  source_.onChange([this](Change change) {
    changes_.push_back(change);
    source_.snapshot();
  });
  read();
  const auto reads = ax_.at(field);
  ax_.at(field).attributes.clear();  // answers nothing
  EXPECT_FALSE(source_.snapshot());
  changes_.clear();
  ax_.at(field) = reads;
  loop_.advance(Milliseconds(200));
  EXPECT_EQ(changes_, std::vector{Change::value});
  read();

  ax_.at(field).attributes.clear();
  source_.snapshot();
  changes_.clear();
  loop_.advance(Milliseconds(10'000));
  EXPECT_EQ(changes_.size(), 3U) << "what is no field is not looked at for ever";
}

TEST_F(AXFieldSourceTest, LooksAgainWhileAFieldScrollsToItsCaret) {
  const auto field = open(add("AXTextArea", u"one line"));
  ax_.at(field).textOrigin.y += 300;  // below the field's frame
  read();
  changes_.clear();
  loop_.advance(Milliseconds(50));
  EXPECT_EQ(changes_, std::vector{Change::value});
  ax_.at(field).textOrigin.y -= 300;
  read();
  changes_.clear();
  loop_.advance(Milliseconds(1000));
  EXPECT_TRUE(changes_.empty());

  ax_.at(field).textOrigin.y += 300;
  source_.onChange([this](Change change) {
    changes_.push_back(change);
    source_.snapshot();
  });
  read();
  loop_.advance(Milliseconds(10'000));
  EXPECT_EQ(changes_.size(), 4U) << "a frame that is told wrongly is not looked at for ever";
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
  struct Case {
    RunningApp app;
    bool refuses;
    std::vector<std::string> written;
  };
  const std::vector<Case> cases{
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

TEST_F(AXFieldSourceTest, InsertsByTheMethodAskedFor) {
  const auto field = open(add("AXTextArea", u"one"));
  source_.insert(" two", InsertionMethod::accessibility);
  settle();
  EXPECT_EQ(read().before, "one two");
  EXPECT_EQ(poster_.text(), "");
  source_.insert("x", InsertionMethod::typing);
  settle();
  EXPECT_EQ(poster_.text(), "x");
  ax_.at(field).refusesWrites = true;
  source_.insert("yz", InsertionMethod::accessibility);
  settle();
  EXPECT_EQ(poster_.text(), "xyz");
  source_.deleteBackwards(2);
  settle();
  EXPECT_EQ(poster_.text(), "x");
  source_.insert("w", InsertionMethod::paste);
  settle();
  EXPECT_THAT(pasteboard_.lent, ElementsAre("w"));
}

TEST_F(AXFieldSourceTest, InsertsOnlyWhereTheTextWasMeantToGo) {
  const RecordingSystemLog::Line moved{"input", "the focus has moved: nothing is inserted"};
  const auto field = open(add("AXTextArea", u"one")), second = add("AXTextField", u"two");
  addApplication(other);
  ax_.focus(other.processID, add("AXTextField", u"three"));
  const auto stay = [] {};
  const auto otherField = [&] { ax_.focus(editor.processID, second); };
  const auto otherApp = [&] { workspace_.bringToFront(other); };
  const auto noAnswer = [&] { ax_.focus(editor.processID, nullptr); };
  const struct {
    const char* why;
    std::function<void()> happens;
    std::size_t inserted;
  } cases[] = {{"nothing moved", stay, 1},
               {"another field", otherField, 0},
               {"another application", otherApp, 0},
               {"the application does not tell", noAnswer, 1}};
  for (const auto& c : cases)
    for (const auto method :
         {InsertionMethod::typing, InsertionMethod::accessibility, InsertionMethod::paste}) {
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
      const bool written = *ax_.at(field).text == u"x";
      const bool pasted = !pasteboard_.lent.empty(), typed = poster_.text() == "x";
      EXPECT_EQ(written + pasted + typed, c.inserted) << c.why;
      EXPECT_EQ(std::ranges::count(log_.lines, moved), c.inserted == 0) << c.why;
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
