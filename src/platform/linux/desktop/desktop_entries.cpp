#include "platform/linux/desktop/desktop_entries.h"

#include <gio/gdesktopappinfo.h>

#include <algorithm>
#include <array>
#include <cctype>

namespace nimbletype {
namespace {

std::string folded(std::string s) {
  std::ranges::transform(s, s.begin(), [](unsigned char c) { return std::tolower(c); });
  return s;
}

std::string withoutSuffix(std::string id) {
  constexpr std::string_view suffix = ".desktop";
  if (id.ends_with(suffix)) id.erase(id.size() - suffix.size());
  return id;
}

// "mousepad" of "org.xfce.mousepad".
std::string shortName(const std::string& id) {
  return id.substr(id.rfind('.') + 1);
}

std::string textOf(const char* s) {
  return s ? s : "";
}

bool isTerminal(GAppInfo* info) {
  if (!G_IS_DESKTOP_APP_INFO(info)) return false;
  const std::string categories = textOf(g_desktop_app_info_get_categories(G_DESKTOP_APP_INFO(info)));
  return categories.find("TerminalEmulator") != std::string::npos;
}

}  // namespace

DesktopEntries::DesktopEntries() : monitor_(g_app_info_monitor_get()) {
  g_signal_connect_swapped(monitor_.get(), "changed",
                           G_CALLBACK(+[](DesktopEntries* self) { self->loaded_ = false; }), this);
}

DesktopEntries::~DesktopEntries() {
  g_signal_handlers_disconnect_by_data(monitor_.get(), this);
}

void DesktopEntries::load() {
  byID_.clear();
  byWindowClass_.clear();
  byShortName_.clear();
  GList* all = g_app_info_get_all();
  for (GList* item = all; item; item = item->next) {
    auto* info = G_APP_INFO(item->data);
    const DesktopEntry entry{withoutSuffix(textOf(g_app_info_get_id(info))),
                             textOf(g_app_info_get_name(info)), isTerminal(info)};
    if (entry.id.empty()) continue;
    byID_.emplace(folded(entry.id), entry);
    byShortName_.emplace(folded(shortName(entry.id)), entry);
    const std::string windowClass =
        G_IS_DESKTOP_APP_INFO(info)
            ? textOf(g_desktop_app_info_get_startup_wm_class(G_DESKTOP_APP_INFO(info)))
            : "";
    if (!windowClass.empty()) byWindowClass_.emplace(folded(windowClass), entry);
  }
  g_list_free_full(all, g_object_unref);
  loaded_ = true;
}

std::optional<DesktopEntry> DesktopEntries::find(const Index& index, const std::string& key) const {
  const auto found = key.empty() ? index.end() : index.find(folded(key));
  return found == index.end() ? std::nullopt : std::optional(found->second);
}

DesktopEntry DesktopEntries::of(const WindowIdentity& window) {
  if (!loaded_) load();
  if (const auto entry = find(byID_, window.gtkApplicationID)) return *entry;
  const std::array names{window.className, window.instanceName, window.executable};
  for (const Index* index : {&byWindowClass_, &byID_, &byShortName_})
    for (const auto& name : names)
      if (const auto entry = find(*index, name)) return *entry;
  // Not installed, such as a program started from its build folder: what the window says has to do.
  const std::string name = window.className.empty() ? window.executable : window.className;
  if (!window.gtkApplicationID.empty()) return {window.gtkApplicationID, name};
  return {window.executable.empty() ? name : window.executable, name};
}

}  // namespace nimbletype
