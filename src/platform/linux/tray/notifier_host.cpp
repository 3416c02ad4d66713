#include "platform/linux/tray/notifier_host.h"

#include <unistd.h>

#include <algorithm>
#include <utility>

namespace nimbletype {
namespace {

constexpr const char* watcher = "org.kde.StatusNotifierWatcher";

std::vector<std::string> stringsIn(GVariant* v) {
  std::vector<std::string> strings;
  for (gsize i = 0; v && i < g_variant_n_children(v); ++i) strings.push_back(stringOf(childOf(v, i).get()));
  return strings;
}

VariantPtr lookUp(GVariant* dictionary, const char* key, const GVariantType* type) {
  return VariantPtr(dictionary ? g_variant_lookup_value(dictionary, key, type) : nullptr);
}

}  // namespace

NotifierHost::NotifierHost(std::function<void()> changed)
    : changed_(std::move(changed)),
      watch_(watcher, [this](GDBusConnection* connection) { follow(connection); }) {}

bool NotifierHost::hasOurs() const {
  return isThere_ && std::ranges::any_of(items_, [this](const std::string& item) {
           const auto found = isOurs_.find(item);
           return found != isOurs_.end() && found->second.value_or(false);
         });
}

void NotifierHost::forgetOurs() {
  questions_.clear();
  for (const auto& item : items_) isOurs_[item] = false;
}

void NotifierHost::follow(GDBusConnection* connection) {
  signals_ = {};
  question_ = {};
  questions_.clear();
  isOurs_.clear();
  connection_.reset(connection ? g_object_ref(connection) : nullptr);
  if (!connection) return take(nullptr);
  signals_ = dbusSignals(connection, watcher, watcher, [this](const std::string&, GVariant*) { ask(); });
  ask();
}

// The watcher tells of its properties by signals of its own.
void NotifierHost::ask() {
  question_ = dbusRequest(connection_.get(),
                          {watcher, "/StatusNotifierWatcher", "org.freedesktop.DBus.Properties", "GetAll",
                           g_variant_new("(s)", watcher)},
                          [this](GVariant* reply) { take(childOf(reply, 0).get()); });
}

void NotifierHost::take(GVariant* properties) {
  const auto host = lookUp(properties, "IsStatusNotifierHostRegistered", G_VARIANT_TYPE_BOOLEAN);
  const auto items = lookUp(properties, "RegisteredStatusNotifierItems", G_VARIANT_TYPE_STRING_ARRAY);
  isKnown_ = true;
  isThere_ = host && g_variant_get_boolean(host.get());
  items_ = stringsIn(items.get());
  for (const auto& item : items_)
    if (isOurs_.try_emplace(item).second) askOwner(item);
  changed_();
}

// An item is its owner's name on the bus, with or without a path behind it.
void NotifierHost::askOwner(const std::string& item) {
  questions_[item] = dbusRequest(
      connection_.get(),
      {"org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "GetConnectionUnixProcessID",
       g_variant_new("(s)", item.substr(0, item.find('/')).c_str())},
      [this, item](GVariant* reply) {
        const auto process = childOf(reply, 0);
        isOurs_[item] = process && static_cast<pid_t>(g_variant_get_uint32(process.get())) == getpid();
        changed_();
      });
}

}  // namespace nimbletype
