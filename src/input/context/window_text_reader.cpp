#include "input/context/window_text_reader.h"

#include <deque>
#include <memory>

#include "input/context/window_text.h"

namespace nimbletype {
namespace {

constexpr std::int64_t longestText = 4000;  // UTF-16 units of one element

// A frame without size tells nothing.
bool isOutside(const std::optional<TopLeftRect>& frame, const std::optional<TopLeftRect>& window) {
  if (!frame || !window || frame->width <= 0 || frame->height <= 0) return false;
  return frame->x >= window->right() || frame->right() <= window->x || frame->y >= window->bottom() ||
         frame->bottom() <= window->y;
}

class Walk {
 public:
  Walk(MainLoop& loop, const AXElement& window, AXElement field, WindowTextReader::Done done)
      : loop_(loop), field_(std::move(field)), done_(std::move(done)), begun_(loop.now()), queue_{window} {
    next_ = loop_.after(Milliseconds(0), [this] { step(); });
  }

 private:
  struct Node {
    AXElement element;
    ElementUse use = ElementUse::skip;
    std::string title;
    TopLeftRect frame;
  };

  void step();
  bool isOver() const;
  void visit(const AXElement& element);
  void look(const Node& node, bool wantsChildren);
  void readText(const Node& node);
  void keep(const Node& node, std::string text);
  void add(const AttributeValue& children);

  MainLoop& loop_;
  AXElement field_;
  WindowTextReader::Done done_;
  MonotonicTime begun_;
  std::deque<AXElement> queue_;
  std::optional<TopLeftRect> windowFrame_;  // once the window itself was visited
  WindowReading reading_;
  int visited_ = 0, silent_ = 0;
  std::size_t bytes_ = 0;
  Task next_;
};

bool Walk::isOver() const {
  return queue_.empty() || !reading_.isAnswered || visited_ >= WindowTextReader::mostNodes ||
         bytes_ >= WindowTextReader::mostBytes || loop_.now() - begun_ >= WindowTextReader::longest;
}

void Walk::step() {
  const MonotonicTime start = loop_.now();
  for (int i = 0; i < WindowTextReader::nodesInSlice && !isOver(); ++i) {
    visit(queue_.front());
    queue_.pop_front();
    if (loop_.now() - start >= WindowTextReader::slice) break;
  }
  if (!isOver()) {
    next_ = loop_.after(WindowTextReader::pause, [this] { step(); });
    return;
  }
  // The handler may end this walk.
  const auto done = std::move(done_);
  WindowReading reading = std::move(reading_);
  done(std::move(reading));
}

void Walk::visit(const AXElement& element) {
  ++visited_;
  const auto values = element.readBriefly(
      {{"AXRole", {}}, {"AXSubrole", {}}, {"AXTitle", {}}, {"AXFrame", {}}, {"AXVisibleChildren", {}}});
  const auto role = valueAs<std::string>(values[0]);
  silent_ = role ? 0 : silent_ + 1;
  reading_.isAnswered = silent_ < WindowTextReader::mostSilent;
  if (!role) return;
  const auto frame = valueAs<TopLeftRect>(values[3]);
  const bool isWindow = visited_ == 1;
  if (isWindow) windowFrame_ = frame;
  if (!isWindow && isOutside(frame, windowFrame_)) return;
  Node node{element, useOf(*role, valueAs<std::string>(values[1]).value_or("")),
            valueAs<std::string>(values[2]).value_or(""), frame.value_or(TopLeftRect())};
  if (node.use == ElementUse::skip) return;
  add(values[4]);
  look(node, !std::holds_alternative<ObjectList>(values[4]));
}

void Walk::look(const Node& node, bool wantsChildren) {
  if (node.use == ElementUse::textArea) return readText(node);
  const bool wantsValue = node.use == ElementUse::value && node.title.empty();
  std::vector<AttributeRead> reads;
  if (wantsValue) reads.push_back({"AXValue", {}});
  if (wantsChildren) reads.push_back({"AXChildren", {}});
  const auto values = reads.empty() ? std::vector<AttributeValue>() : node.element.readBriefly(reads);
  if (wantsValue)
    keep(node, valueAs<std::string>(values.front()).value_or(""));
  else if (node.use != ElementUse::container)
    keep(node, node.title);
  if (wantsChildren) add(values.back());
}

void Walk::readText(const Node& node) {
  const auto extent =
      node.element.readBriefly({{"AXVisibleCharacterRange", {}}, {"AXNumberOfCharacters", {}}});
  const auto count = valueAs<double>(extent[1]);
  const auto inSight = valueAs<TextRange>(extent[0]);
  if (!inSight && !count) return;
  TextRange range = inSight ? *inSight : TextRange{0, static_cast<std::int64_t>(*count)};
  range.length = std::min(range.length, longestText);
  if (range.length <= 0) return;
  const auto text = node.element.readBriefly({{"AXStringForRange", range}});
  keep(node, valueAs<std::string>(text[0]).value_or(""));
}

void Walk::keep(const Node& node, std::string text) {
  if (text.empty()) return;
  bytes_ += text.size();
  const bool isField = field_ && node.element == field_;
  (isField ? reading_.ofField : reading_.pieces).push_back({std::move(text), node.frame});
}

void Walk::add(const AttributeValue& children) {
  const auto* list = std::get_if<ObjectList>(&children);
  if (!list) return;
  for (const ObjectRef& child : *list) queue_.push_back(queue_.front().neighbour(child));
}

}  // namespace

Task WindowTextReader::read(const AXElement& window, const AXElement& field, Done done) {
  auto walk = std::make_shared<Walk>(loop_, window, field, std::move(done));
  return Task([walk]() mutable { walk.reset(); });
}

}  // namespace nimbletype
