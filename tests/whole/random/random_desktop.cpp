#include "tests/whole/random/random_desktop.h"

#include <cmath>
#include <limits>

#include "text/text.h"

namespace nimbletype {

// Writes after a while, in pieces or at once, or fails.
class RandomProvider final : public CompletionProvider {
 public:
  explicit RandomProvider(RandomDesktop& desktop) : d_(desktop) {}
  EngineKind kind() const override { return EngineKind::builtIn; }
  PromptStyle promptStyle() const override { return PromptStyle::raw; }
  bool streams() const override { return true; }
  Task status(StatusHandler) override { return {}; }
  Task complete(const CompletionRequest& request, PartialHandler grow, ResultHandler done) override {
    EXPECT_EQ(request.rawPrompt.find(RandomDesktop::secret), std::string::npos);
    static const std::vector<std::string> texts{" and so on it goes", "s are here", " 😀 yes, indeed", "",
                                                "\n"};
    const std::string text = d_.dice_.pick(texts);
    const Milliseconds delay(d_.dice_.upTo(80));
    auto job = std::make_shared<std::pair<Task, Task>>();
    job->first = d_.loop.after(delay, [=] { grow(text.substr(0, text.size() / 2)); });
    job->second = d_.loop.after(delay * 2, [=, this] {
      if (d_.dice_.oneIn(10))
        done(std::unexpected(ProviderError{"The engine is tired."}));
      else
        done(Completion{text, {}});
    });
    return Task([job] { *job = {}; });
  }

 private:
  RandomDesktop& d_;
};

Providers RandomDesktop::makeProviders(RandomDesktop& desktop) {
  Providers all;
  all.push_back(std::make_unique<RandomProvider>(desktop));
  return all;
}

RandomDesktop::RandomDesktop(std::uint64_t seed)
    : EngineWorld([this](EngineWorld&) { return makeProviders(*this); }), dice_(seed) {
  for (std::int64_t id = 10; id < 13; ++id) {
    App app{{id, "org.app" + std::to_string(id), "App", {}, false, id == 12}, {}};
    ax_.addApplication(id);
    for (int i = 0; i < 6; ++i) app.elements.push_back(makeElement());
    apps_.push_back(std::move(app));
  }
  engine.setSource(source_);
  tap_.start();
  source_.start();
  // What vanishes does so between any two questions.
  ax_.beforeRead = [this](const ObjectRef& element) {
    for (const App& app : apps_)
      for (const ObjectRef& own : app.elements)
        if (isAlive(own) && own->same(*element) && dice_.oneIn(3000)) {
          vanished_.insert(own->hash());
          ax_.remove(own);
        }
  };
}

// --- what applications show ---

ObjectRef RandomDesktop::makeElement() {
  static const std::vector<const char*> roles{"AXTextArea", "AXTextArea",        "AXTextField",
                                              "AXComboBox", "AXSecureTextField", "AXStaticText",
                                              "AXGroup",    "AXButton"};
  const std::string role = dice_.pick(roles);
  ScriptedElement element;
  element.attributes = {{"AXRole", role}, {"AXFrame", TopLeftRect{100, 100, 500, 200}}};
  const bool isSecure = role == "AXSecureTextField" || dice_.oneIn(8);
  if (isSecure) element.attributes["AXSubrole"] = std::string("AXSecureTextField");
  element.text = isSecure ? text::toUtf16(secret) : u"Hello there";
  element.selection = {static_cast<std::int64_t>(element.text->size()), 0};
  element.textOrigin = {104, 104, 8, 16};
  if (dice_.oneIn(3)) misbehave(element);
  const ObjectRef ref = ax_.addElement(std::move(element));
  if (isSecure) secure_.insert(ref->hash());
  return ref;
}

void RandomDesktop::misbehave(ScriptedElement& element) {
  static const std::vector<std::string> attributes{"AXSelectedTextRange",
                                                   "AXNumberOfCharacters",
                                                   "AXStringForRange",
                                                   "AXBoundsForRange",
                                                   "AXFontForRange",
                                                   "AXFrame",
                                                   "AXBoundsForTextMarkerRange",
                                                   "AXStringForTextMarkerRange",
                                                   "AXIsSettable:AXValue"};
  element.hasMarkers = dice_.oneIn(2);
  element.refusesWrites = dice_.oneIn(4);
  for (const std::string& attribute : attributes)
    if (dice_.oneIn(8)) element.failing.insert(attribute);
  const int honesty = static_cast<int>(dice_.upTo(30)) + 1;
  element.lies = [this, honesty](const AttributeRead& read) -> std::optional<AttributeValue> {
    // Nothing but its role tells a password field from others.
    const bool isRole = read.attribute == "AXRole" || read.attribute == "AXSubrole";
    return !isRole && dice_.oneIn(honesty) ? std::optional(lie(read)) : std::nullopt;
  };
}

AttributeValue RandomDesktop::lie(const AttributeRead& read) {
  const auto has = [&](const char* part) { return read.attribute.find(part) != std::string::npos; };
  if (has("Bounds") || has("Frame")) return randomRect();
  if (has("MarkerRange")) return {};
  if (has("Range") && has("Selected")) return TextRange{dice_.upTo(40) - 10, dice_.upTo(20) - 10};
  if (has("Number")) return static_cast<double>(dice_.upTo(40)) - 5;
  if (has("String")) return text::toUtf8(randomText());
  return {};
}

TopLeftRect RandomDesktop::randomRect() {
  static const std::vector<double> numbers{0,
                                           -5,
                                           3,
                                           16,
                                           104,
                                           250,
                                           1e9,
                                           -1e9,
                                           std::numeric_limits<double>::quiet_NaN(),
                                           std::numeric_limits<double>::infinity()};
  const auto any = [&] { return dice_.pick(numbers); };
  return {any(), any(), any(), any()};
}

std::u16string RandomDesktop::randomText() {
  static const std::vector<std::u16string> parts{u"word", u" ",      u"\n", u"\r\n",   u"😀",
                                                 u".",    u"\xD83D", u"é",  u"\xFFFC", u"e\u0301"};
  std::u16string text;
  for (auto i = dice_.upTo(12); i > 0; --i) text += dice_.pick(parts);
  return text;
}

// --- what happens ---

ObjectRef RandomDesktop::focused() {
  const auto front = workspace_.frontmost();
  if (!front) return nullptr;
  const ObjectRef element = focus_[front->processID];
  return isAlive(element) ? element : nullptr;
}

void RandomDesktop::edit() {
  const ObjectRef element = focused();
  if (!element || secure_.contains(element->hash())) return;
  std::u16string text = *ax_.at(element).text;
  const bool typesAlong = ghost.shown && !ghost.shown->text.empty() && dice_.oneIn(2);
  if (dice_.oneIn(12))
    text = randomText();
  else if (dice_.oneIn(10) && !text.empty())
    text.pop_back();
  else
    text += typesAlong ? text::toUtf16(text::firstCharacter(ghost.shown->text)) : u"x";
  const auto size = static_cast<std::int64_t>(text.size());
  const TextRange selection =
      dice_.oneIn(10) ? TextRange{dice_.upTo(size), dice_.upTo(3)} : TextRange{size, 0};
  ax_.edit(workspace_.frontmost()->processID, element, std::move(text), selection);
}

void RandomDesktop::moveFocus() {
  const App& app = dice_.pick(apps_);
  if (dice_.oneIn(6)) return workspace_.bringToFront(app.app);
  const ObjectRef element = dice_.oneIn(8) ? nullptr : dice_.pick(app.elements);
  if (element && !isAlive(element)) return;
  focus_[app.app.processID] = element;
  ax_.focus(app.app.processID, element);
}

// What the keys posted do reaches the application later.
void RandomDesktop::deliver() {
  const std::string text = poster_.text();
  poster_.posted.clear();
  const ObjectRef element = focused();
  if (text.empty() || !element || secure_.contains(element->hash())) return;
  std::u16string content = *ax_.at(element).text + text::toUtf16(text);
  const auto size = static_cast<std::int64_t>(content.size());
  ax_.edit(workspace_.frontmost()->processID, element, std::move(content), {size, 0});
}

void RandomDesktop::pressKey() {
  static const std::vector<std::uint16_t> keys{key::tab, key::tab, key::aboveTab, key::escape, 0};
  const std::uint16_t code = dice_.pick(keys);
  const auto before = ghost.shown;
  const auto fieldKey = engine.snapshot().get() ? engine.snapshot().get()->fieldKey : "";
  poster_.posted.clear();
  ax_.written.clear();
  const bool swallowed = eventTap_.press({code, {}, code == 0 ? "a" : "", false});
  loop.advance(Milliseconds(0));  // insertions have a turn of their own
  EXPECT_TRUE(before || !swallowed) << "key " << code << " was taken with nothing on screen";

  std::string put = poster_.text();
  for (const auto& written : ax_.written) {
    if (written.attribute != "AXSelectedText" || !put.empty()) continue;
    put = std::get<std::string>(written.value);
    EXPECT_TRUE(fieldKey.ends_with(":" + std::to_string(written.element->hash()))) << fieldKey;
  }
  if (put.empty()) return;
  ++inserted;
  EXPECT_TRUE(swallowed) << "inserted \"" << put << "\" for a key of the application";
  ASSERT_TRUE(before);
  const bool whole = code == key::aboveTab;
  EXPECT_TRUE(whole ? before->text.ends_with(put) : before->text.find(put) != std::string::npos)
      << "inserted \"" << put << "\" while \"" << before->text << "\" was shown";
}

void RandomDesktop::vanish() {
  App& app = apps_[static_cast<std::size_t>(dice_.upTo(2))];
  ObjectRef& element = app.elements[static_cast<std::size_t>(dice_.upTo(5))];
  if (isAlive(element) && dice_.oneIn(2)) {
    vanished_.insert(element->hash());
    ax_.remove(element);
  }
  if (!isAlive(element)) element = makeElement();
}

void RandomDesktop::upset() {
  static const std::vector<std::string> names{"AXFocusedUIElementChanged", "AXFocusedWindowChanged",
                                              "AXValueChanged", "AXSelectedTextChanged"};
  switch (dice_.upTo(7)) {
    case 0:
      ax_.hangs = dice_.oneIn(4);
      return;
    case 1:
      secureInput.on = dice_.oneIn(3);
      return;
    case 2:
      return void(source_.pinFocused());
    case 3:
      return source_.unpin();
    case 4:
      return prefs.insertion.set(dice_.oneIn(2) ? InsertionMethod::typing : InsertionMethod::accessibility);
    case 5:
      return void(engine.suggestNow());
    case 6:
      return eventTap_.pointer();
    default:
      ax_.tell(dice_.pick(apps_).app.processID, dice_.pick(names), focused());
  }
}

void RandomDesktop::step() {
  const std::int64_t what = dice_.upTo(19);
  if (what < 9)
    edit();
  else if (what < 13)
    pressKey();
  else if (what < 14)
    moveFocus();
  else if (what < 15)
    upset();
  else if (what < 17)
    deliver();
  else if (dice_.oneIn(10))
    vanish();
  loop.advance(Milliseconds(dice_.oneIn(20) ? dice_.upTo(5000) : dice_.upTo(60)));
  shown += ghost.shown.has_value();
  snapshots += engine.snapshot().get().has_value();
  expectNothingSecretWasRead();
}

void RandomDesktop::expectNothingSecretWasRead() {
  for (const auto& asked : std::exchange(ax_.askedTexts, {})) {
    EXPECT_FALSE(secure_.contains(asked.element->hash())) << asked.read.attribute;
    EXPECT_FALSE(secureInput.on) << asked.read.attribute;
  }
  const auto& snapshot = engine.snapshot().get();
  if (!snapshot || !snapshot->isSecure) return;
  EXPECT_EQ(snapshot->before + snapshot->after, "");
  EXPECT_FALSE(ghost.shown);
}

}  // namespace nimbletype
