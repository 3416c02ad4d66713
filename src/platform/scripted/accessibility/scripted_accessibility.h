#pragma once
#include <cstdint>
#include <functional>
#include <list>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "platform/accessibility/accessibility.h"
#include "platform/system/main_loop.h"

namespace nimbletype {

// One element of the scripted tree. Its fields are what a test sets: attributes by name, a text to edit, and
// ways to misbehave.
struct ScriptedElement {
  std::map<std::string, AttributeValue, std::less<>> attributes;

  // An editable text. Characters stand in a grid that starts at `textOrigin`, a column for each UTF-16 unit.
  std::optional<std::u16string> text;
  TextRange selection;
  TopLeftRect textOrigin{0, 0, 8, 16};  // with the size of one character
  TextFont font{std::string("Fixed"), 13.0};
  // Answers through text markers as well. The leaf of the tree that shows a position, for those that differ
  // from the field.
  bool hasMarkers = false;
  std::function<ObjectRef(std::int64_t position)> leafAt;

  // An answer given here stands in for the true one; an attribute named in `failing` is never answered.
  std::function<std::optional<AttributeValue>(const AttributeRead&)> lies;
  std::set<std::string, std::less<>> failing;
  bool refusesWrites = false;
};

// What a text answers through its markers: positions in UTF-16 units behind opaque handles.
AttributeValue answerThroughMarkers(const ScriptedElement& element, const ObjectRef& ref,
                                    const AttributeRead& read);
// The cell of a range that lies within one line.
TopLeftRect scriptedBox(const ScriptedElement& element, const TextRange& range);

// A tree of elements in place of other applications. What happens to it is told from the main loop, as a real
// desktop would. It counts what it is asked for, and keeps each text that was asked for, answered or not.
class ScriptedAccessibility : public Accessibility {
 public:
  explicit ScriptedAccessibility(MainLoop& loop) : loop_(loop) {}

  ObjectRef addApplication(std::int64_t processID);
  ObjectRef addElement(ScriptedElement element);
  // Makes the element the last of its parent's children; none are told unless asked for.
  ObjectRef addChild(const ObjectRef& parent, ScriptedElement element);
  ScriptedElement& at(const ObjectRef& element);
  // The element is gone: whatever is asked of it is absent from now on.
  void remove(const ObjectRef& element);
  // Changes the application's focus and tells of it.
  void focus(std::int64_t processID, const ObjectRef& element);
  void tell(std::int64_t processID, const std::string& name, const ObjectRef& element);
  void edit(std::int64_t processID, const ObjectRef& element, std::u16string text, TextRange selection);

  ObjectRef application(std::int64_t processID) override;
  std::vector<AttributeValue> read(const ObjectRef& element, std::span<const AttributeRead> reads) override;
  std::vector<AttributeValue> readBriefly(const ObjectRef& element,
                                          std::span<const AttributeRead> reads) override;
  bool write(const ObjectRef& element, std::string_view attribute, const AttributeValue& value) override;
  std::optional<Task> observe(std::int64_t processID, Notification notify) override;
  std::optional<Task> watch(std::int64_t processID, const ObjectRef& element) override;
  std::optional<MarkerPair> endsOf(const ObjectRef& markerRange) override;
  ObjectRef markerRange(const MarkerPair& ends) override;
  bool isTrusted() override { return trusted; }

  struct AskedText {
    ObjectRef element;
    AttributeRead read;
  };
  struct Written {
    ObjectRef element;
    std::string attribute;
    AttributeValue value;
  };
  bool trusted = true;
  bool hangs = false;      // every read takes its full time and answers nothing
  bool observable = true;  // whether applications can be observed yet
  int batches = 0;         // calls of `read`
  std::function<void(const ObjectRef&)> beforeRead;
  double secondsLost = 0;  // to reads that hung
  std::vector<AskedText> askedTexts;
  std::vector<Written> written;
  // How many observe and watch.
  std::size_t listenerCount() const { return listeners_->observers.size() + listeners_->watches.size(); }

 private:
  struct Observer {
    std::int64_t process;
    Notification notify;
  };
  struct Watch {
    std::int64_t process;
    ObjectRef element;
  };
  struct Listeners {
    std::list<std::shared_ptr<Observer>> observers;
    std::list<std::shared_ptr<Watch>> watches;
    bool isWatching(std::int64_t process, const ObjectRef& element) const;
  };
  AttributeValue answer(const ObjectRef& ref, const AttributeRead& read);
  std::vector<AttributeValue> readWithin(double seconds, const ObjectRef& element,
                                         std::span<const AttributeRead> reads);
  void replaceSelection(const ObjectRef& ref, const std::string& text);

  MainLoop& loop_;
  std::map<std::int64_t, ObjectRef> applications_;
  std::map<std::uint64_t, ScriptedElement> elements_;
  std::uint64_t lastHash_ = 1000;
  std::shared_ptr<Listeners> listeners_ = std::make_shared<Listeners>();
};

}  // namespace nimbletype
