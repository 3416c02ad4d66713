#include "platform/linux/accessibility/tree/atspi_search.h"

#include <algorithm>

namespace nimbletype::atspi {
namespace {

constexpr const char* collection = "org.a11y.atspi.Collection";
constexpr std::size_t mostVisited = 3000;
constexpr std::uint64_t bit(unsigned state) {
  return std::uint64_t{1} << state;
}

// A rule that matches by one state alone; empty sets of everything else match all.
GVariant* matchesState(unsigned state) {
  GVariantBuilder none, states;
  g_variant_builder_init(&states, G_VARIANT_TYPE("ai"));
  g_variant_builder_add(&states, "i", static_cast<gint32>(bit(state)));
  g_variant_builder_add(&states, "i", 0);
  g_variant_builder_init(&none, G_VARIANT_TYPE("a{ss}"));
  GVariantBuilder roles, interfaces;
  g_variant_builder_init(&roles, G_VARIANT_TYPE("ai"));
  for (int i = 0; i < 4; ++i) g_variant_builder_add(&roles, "i", 0);
  g_variant_builder_init(&interfaces, G_VARIANT_TYPE("as"));
  constexpr int all = 1, canonicalOrder = 1, most = 16;
  return g_variant_new("((aiia{ss}iaiiasib)uib)", &states, all, &none, all, &roles, all, &interfaces, all,
                       FALSE, canonicalOrder, most, TRUE);
}

struct Node {
  AtspiRef object;
  AtspiStates states;
  std::uint32_t role = 0;
};

std::vector<Node> describe(AtspiBus& bus, const std::vector<AtspiRef>& objects, Deadline deadline) {
  DBusBatch batch(bus.connection(), deadline);
  for (const auto& o : objects) {
    batch.call({o->bus(), o->path(), accessible, "GetState", nullptr});
    batch.call({o->bus(), o->path(), accessible, "GetRole", nullptr});
  }
  batch.wait();
  std::vector<Node> nodes;
  for (std::size_t i = 0; i < objects.size(); ++i)
    nodes.push_back({objects[i], statesOf(batch.reply(2 * i)), roleOf(batch.reply(2 * i + 1))});
  return nodes;
}

std::vector<AtspiRef> childrenOf(AtspiBus& bus, const std::vector<AtspiRef>& parents, Deadline deadline) {
  DBusBatch batch(bus.connection(), deadline);
  for (const auto& o : parents) batch.call({o->bus(), o->path(), accessible, "GetChildren", nullptr});
  batch.wait();
  std::vector<AtspiRef> all;
  for (std::size_t i = 0; i < parents.size(); ++i)
    for (auto& child : objectsOf(batch.reply(i))) all.push_back(std::move(child));
  return all;
}

// What is typed into comes first: containers, documents and the tab of a page say that they are focused too.
struct Focused {
  AtspiRef text, other;
  AtspiRef best() const { return text ? text : other; }
  void look(const Node& node) {
    if (!node.states.has(atspi_state::focused)) return;
    const bool typedInto = node.states.has(atspi_state::editable) || node.role == atspi_role::passwordText;
    if (typedInto && !text) text = node.object;
    if (!typedInto && !other && !isPlainContainer(node.role)) other = node.object;
  }
};

// Qt offers no collections. Level by level, one round trip each for states and children, over what is on
// screen.
AtspiRef walk(AtspiBus& bus, const AtspiRef& top, Deadline deadline) {
  std::vector<AtspiRef> level{top};
  std::size_t visited = 0;
  Focused found;
  while (!level.empty() && !found.text && visited < mostVisited && deadline.left() > 0) {
    visited += level.size();
    std::vector<AtspiRef> shown;
    for (const auto& node : describe(bus, level, deadline)) {
      found.look(node);
      if (node.states.has(atspi_state::showing) || sameObject(node.object, top)) shown.push_back(node.object);
    }
    level = childrenOf(bus, shown, deadline);
  }
  return found.best();
}

}  // namespace

std::uint32_t roleOf(GVariant* reply) {
  const VariantPtr number = childOf(reply, 0);
  const bool isNumber = number && g_variant_is_of_type(number.get(), G_VARIANT_TYPE_UINT32);
  return isNumber ? g_variant_get_uint32(number.get()) : 0;
}

AtspiStates statesOf(GVariant* reply) {
  const VariantPtr words = childOf(reply, 0);
  AtspiStates states;
  if (!words || !g_variant_is_of_type(words.get(), G_VARIANT_TYPE("au"))) return states;
  for (gsize i = 0; i < std::min<gsize>(2, g_variant_n_children(words.get())); ++i)
    states.bits |= static_cast<std::uint64_t>(g_variant_get_uint32(childOf(words.get(), i).get()))
                   << (32 * i);
  return states;
}

AtspiRef objectOf(GVariant* pair) {
  if (!pair || !g_variant_is_of_type(pair, G_VARIANT_TYPE("(so)"))) return nullptr;
  auto object =
      std::make_shared<AtspiObject>(stringOf(childOf(pair, 0).get()), stringOf(childOf(pair, 1).get()));
  return object->bus().empty() || object->path().ends_with("/null") ? nullptr : object;
}

std::vector<AtspiRef> objectsOf(GVariant* reply) {
  std::vector<AtspiRef> objects;
  const VariantPtr list = childOf(reply, 0);
  for (gsize i = 0; list && i < g_variant_n_children(list.get()); ++i)
    if (auto object = objectOf(childOf(list.get(), i).get())) objects.push_back(std::move(object));
  return objects;
}

std::optional<std::vector<AtspiRef>> childrenWithin(AtspiBus& bus, const AtspiRef& parent, std::int32_t most,
                                                    Deadline deadline) {
  DBusBatch batch(bus.connection(), deadline);
  const auto asked = batch.property(parent->bus(), parent->path(), accessible, "ChildCount");
  batch.wait();
  GVariant* count = batch.reply(asked);
  if (!count || !g_variant_is_of_type(count, G_VARIANT_TYPE_INT32)) return std::nullopt;
  if (g_variant_get_int32(count) > most) return std::nullopt;
  if (g_variant_get_int32(count) == 0) return std::vector<AtspiRef>();
  return childrenOf(bus, {parent}, deadline);
}

std::vector<AtspiRef> shownOf(AtspiBus& bus, const std::vector<AtspiRef>& objects, Deadline deadline) {
  DBusBatch batch(bus.connection(), deadline);
  for (const auto& o : objects) batch.call({o->bus(), o->path(), accessible, "GetState", nullptr});
  batch.wait();
  std::vector<AtspiRef> shown;
  for (std::size_t i = 0; i < objects.size(); ++i)
    if (statesOf(batch.reply(i)).has(atspi_state::showing)) shown.push_back(objects[i]);
  return shown;
}

std::vector<AtspiRef> windowsOf(AtspiBus& bus, const std::string& application, Deadline deadline) {
  return childrenOf(bus, {std::make_shared<AtspiObject>(application, AtspiObject::rootPath)}, deadline);
}

AtspiRef findActiveWindow(AtspiBus& bus, const std::string& application, Deadline deadline) {
  const auto nodes = describe(bus, windowsOf(bus, application, deadline), deadline);
  const auto active =
      std::ranges::find_if(nodes, [](const Node& n) { return n.states.has(atspi_state::active); });
  return active == nodes.end() ? nullptr : active->object;
}

AtspiRef findFocused(AtspiBus& bus, const AtspiRef& window, Deadline deadline) {
  DBusBatch batch(bus.connection(), deadline);
  const auto matches = batch.call(
      {window->bus(), window->path(), collection, "GetMatches", matchesState(atspi_state::focused)});
  batch.wait();
  if (batch.timedOut()) return nullptr;
  if (!batch.reply(matches)) return walk(bus, window, deadline);
  Focused found;
  for (const auto& node : describe(bus, objectsOf(batch.reply(matches)), deadline)) found.look(node);
  return found.best();
}

}  // namespace nimbletype::atspi
