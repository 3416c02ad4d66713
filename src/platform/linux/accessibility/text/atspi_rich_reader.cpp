#include "platform/linux/accessibility/text/atspi_rich_reader.h"

#include <algorithm>
#include <array>
#include <tuple>

#include "platform/linux/accessibility/tree/atspi_search.h"
#include "text/text.h"

namespace nimbletype {
namespace {

constexpr char32_t objectCharacter = 0xFFFC;
constexpr int deepest = 8;                               // levels of lists in quotes in tables
constexpr std::int64_t mostBefore = 60, mostAfter = 12;  // children beside the one with the caret
constexpr std::size_t mostKnown = 2000, mostMixed = 300;
// What stands in a line of text beside its words.
constexpr std::array<std::uint32_t, 5> inlineRoles{27, 29, 43, 88,
                                                   116};  // image, label, button, link, static
constexpr std::uint32_t staticText = 116;

DBusBatch::Id askText(DBusBatch& batch, const AtspiRef& element, const char* method, GVariant* arguments) {
  return batch.call({element->bus(), element->path(), atspi::textInterface, method, arguments});
}

std::u32string toUtf32(std::string_view utf8) {
  const std::u16string units = text::toUtf16(utf8);
  std::u32string points;
  for (std::size_t i = 0; i < units.size(); ++i) {
    const bool pair = (units[i] & 0xFC00) == 0xD800 && i + 1 < units.size();
    points.push_back(pair ? 0x10000 + ((units[i] & 0x3FFu) << 10) + (units[i + 1] & 0x3FFu) : units[i]);
    i += pair ? 1 : 0;
  }
  return points;
}

std::int64_t numberOf(const VariantPtr& value, std::int64_t fallback) {
  const bool isNumber = value && g_variant_is_of_type(value.get(), G_VARIANT_TYPE_INT32);
  return isNumber ? g_variant_get_int32(value.get()) : fallback;
}

std::int64_t objectsIn(std::u32string_view text) {
  return std::ranges::count(text, objectCharacter);
}

// The calls about one element, and their answers.
struct NodeReading {
  DBusBatch::Id text, caret, role;
  struct Selection {
    DBusBatch::Id count, first;
  };
  std::optional<Selection> selection;

  // Text and caret are asked for at once, so that they agree while somebody types.
  NodeReading(DBusBatch& batch, const AtspiRef& element, bool asksSelection)
      : text(askText(batch, element, "GetText", g_variant_new("(ii)", 0, -1))),
        caret(batch.property(element->bus(), element->path(), atspi::textInterface, "CaretOffset")),
        role(batch.call({element->bus(), element->path(), atspi::accessible, "GetRole", nullptr})) {
    if (asksSelection)
      selection = {askText(batch, element, "GetNSelections", nullptr),
                   askText(batch, element, "GetSelection", g_variant_new("(i)", 0))};
  }

  void answer(const DBusBatch& batch, RichTextNode& node) const {
    node.text = toUtf32(stringOf(childOf(batch.reply(text), 0).get()));
    node.isBlock = std::ranges::find(inlineRoles, atspi::roleOf(batch.reply(role))) == inlineRoles.end();
    GVariant* at = batch.reply(caret);
    node.caret = at && g_variant_is_of_type(at, G_VARIANT_TYPE_INT32) ? g_variant_get_int32(at) : -1;
    if (!selection || numberOf(childOf(batch.reply(selection->count), 0), 0) == 0) return;
    const auto from = numberOf(childOf(batch.reply(selection->first), 0), -1);
    const auto to = numberOf(childOf(batch.reply(selection->first), 1), -1);
    node.selectionStart = std::min(from, to);
    node.selectionEnd = std::max(from, to);
  }
};

// The child whose U+FFFC the caret stands at; the last one where it stands at none.
std::int64_t childAtCaret(const RichTextNode& node) {
  const auto upTo = std::clamp<std::int64_t>(node.caret, 0, std::ssize(node.text));
  const auto index = objectsIn(std::u32string_view(node.text).substr(0, static_cast<std::size_t>(upTo)));
  return std::min(index, std::max<std::int64_t>(0, objectsIn(node.text) - 1));
}

bool selects(const RichTextNode& node) {
  return node.selectionEnd > node.selectionStart;
}

}  // namespace

bool AtspiRichReader::ByName::operator()(const AtspiObject& a, const AtspiObject& b) const {
  return std::tie(a.path(), a.bus()) < std::tie(b.path(), b.bus());
}

bool AtspiRichReader::isRich(const AtspiRef& text) const {
  const auto found = isRich_.find(*text);
  return found != isRich_.end() && found->second;
}

// A field of a form keeps its text to itself, whatever the browser builds it from.
bool AtspiRichReader::looksRich(const AtspiRef& element, Deadline deadline) {
  if (const auto found = isRich_.find(*element); found != isRich_.end()) return found->second;
  if (!bus_.toolkit(element->bus(), deadline).hasPages) return false;
  if (isRich_.size() > mostKnown) isRich_.clear();
  DBusBatch batch(bus_.connection(), deadline);
  const auto asked =
      batch.call({element->bus(), element->path(), atspi::accessible, "GetAttributes", nullptr});
  batch.wait();
  const VariantPtr attributes = childOf(batch.reply(asked), 0);
  if (!attributes || !g_variant_is_of_type(attributes.get(), G_VARIANT_TYPE("a{ss}"))) return false;
  const gchar* tag = "";
  g_variant_lookup(attributes.get(), "tag", "&s", &tag);
  const std::string_view name = tag;
  return isRich_[*element] = !name.empty() && name != "input" && name != "textarea";
}

std::optional<AtspiRichText> AtspiRichReader::read(const AtspiTextPosition& at, Deadline deadline) {
  if (!at.hasCaret) return std::nullopt;
  if (known_.size() > mostKnown) known_.clear();
  RichTextNode root{.element = at.element, .text = {}, .children = {}};
  if (at.end > at.start) {
    root.selectionStart = at.start;
    root.selectionEnd = at.end;
  }
  Level level{&root};
  for (int depth = 0; depth < deepest && !level.empty(); ++depth) {
    ask(level, depth > 0 && selects(root), deadline);
    askChildren(level, deadline);
    level = descend(level);
  }
  if (root.caret < 0) return std::nullopt;
  return AtspiRichText(root);
}

void AtspiRichReader::forget(const AtspiRef& element) {
  known_.erase(*element);
}

// A node that has its text already is known well enough.
void AtspiRichReader::ask(const Level& level, bool asksSelections, Deadline deadline) {
  DBusBatch batch(bus_.connection(), deadline);
  std::vector<std::pair<RichTextNode*, NodeReading>> readings;
  for (RichTextNode* node : level)
    if (node->text.empty()) readings.emplace_back(node, NodeReading(batch, node->element, asksSelections));
  batch.wait();
  for (auto& [node, reading] : readings) {
    reading.answer(batch, *node);
    Known& known = known_[*node->element];
    if (known.text != node->text) known.children.reset();
    known.text = node->text;
    known.isBlock = node->isBlock;
  }
}

void AtspiRichReader::askChildren(const Level& level, Deadline deadline) {
  DBusBatch batch(bus_.connection(), deadline);
  std::vector<std::pair<RichTextNode*, DBusBatch::Id>> asked;
  for (RichTextNode* node : level) {
    if (objectsIn(node->text) == 0 || known_[*node->element].children) continue;
    const auto& element = node->element;
    asked.emplace_back(
        node, batch.call({element->bus(), element->path(), atspi::accessible, "GetChildren", nullptr}));
  }
  if (asked.empty()) return;
  batch.wait();

  for (const auto& [node, id] : asked) {
    auto children = atspi::objectsOf(batch.reply(id));
    // Beside words of its own those have elements too.
    if (std::ssize(children) != objectsIn(node->text)) children = withoutStaticText(children, deadline);
    known_[*node->element].children = std::move(children);
  }
}

std::vector<AtspiRef> AtspiRichReader::withoutStaticText(const std::vector<AtspiRef>& children,
                                                         Deadline deadline) const {
  if (children.size() > mostMixed) return {};
  DBusBatch batch(bus_.connection(), deadline);
  for (const AtspiRef& child : children)
    batch.call({child->bus(), child->path(), atspi::accessible, "GetRole", nullptr});
  batch.wait();
  std::vector<AtspiRef> kept;
  for (std::size_t i = 0; i < children.size(); ++i)
    if (atspi::roleOf(batch.reply(i)) != staticText) kept.push_back(children[i]);
  return kept;
}

AtspiRichReader::Level AtspiRichReader::descend(const Level& level) {
  Level next;
  for (RichTextNode* node : level) {
    const Known& known = known_[*node->element];
    if (!known.children || std::ssize(*known.children) != objectsIn(node->text)) continue;
    addChildren(*node, *known.children);
    for (RichTextNode& child : node->children) next.push_back(&child);
  }
  return next;
}

// Of a long text only what is around its caret.
void AtspiRichReader::addChildren(RichTextNode& node, const std::vector<AtspiRef>& children) {
  const std::int64_t current = childAtCaret(node);
  const std::int64_t from = std::max<std::int64_t>(0, current - mostBefore);
  const std::int64_t to = std::min(std::ssize(children), current + mostAfter + 1);
  std::u32string kept;
  std::int64_t index = 0;
  std::optional<std::int64_t> start;
  for (std::size_t i = 0; i < node.text.size(); ++i) {
    const bool inside = index >= from && (index < to || to == std::ssize(children));
    if (inside) kept.push_back(node.text[i]);
    if (inside && !start) start = node.start + static_cast<std::int64_t>(i);
    if (node.text[i] == objectCharacter) ++index;
  }
  for (index = from; index < to; ++index) {
    const AtspiRef& child = children[static_cast<std::size_t>(index)];
    const auto known = known_.find(*child);
    const bool fresh = known == known_.end() || index == current || selects(node);
    node.children.push_back({.element = child,
                             .text = fresh ? std::u32string() : known->second.text,
                             .isBlock = fresh || known->second.isBlock,
                             .children = {}});
  }
  node.text = std::move(kept);
  node.start = start.value_or(node.start);
}

}  // namespace nimbletype
