#include "platform/linux/desktop/desktop_entries.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <utility>

#include "platform/linux/desktop/program_name.h"

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

std::string valueOf(GDesktopAppInfo* info, const char* key) {
  gchar* value = g_desktop_app_info_get_string(info, key);
  std::string text = textOf(value);
  g_free(value);
  return text;
}

bool isTerminal(GDesktopAppInfo* info) {
  return textOf(g_desktop_app_info_get_categories(info)).find("TerminalEmulator") != std::string::npos;
}

std::vector<std::string> wordsOf(const std::string& command) {
  std::vector<std::string> words;
  int count = 0;
  gchar** parsed = nullptr;
  if (g_shell_parse_argv(command.c_str(), &count, &parsed, nullptr)) words.assign(parsed, parsed + count);
  g_strfreev(parsed);
  return words;
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
  byProgram_.clear();
  GList* all = g_app_info_get_all();
  for (GList* item = all; item; item = item->next) {
    if (!G_IS_DESKTOP_APP_INFO(item->data)) continue;
    auto* info = G_DESKTOP_APP_INFO(item->data);
    const DesktopEntry entry{withoutSuffix(textOf(g_app_info_get_id(G_APP_INFO(info)))),
                             textOf(g_app_info_get_name(G_APP_INFO(info))), isTerminal(info),
                             valueOf(info, "Icon")};
    if (entry.id.empty()) continue;
    byID_.emplace(folded(entry.id), entry);
    byShortName_.emplace(folded(shortName(entry.id)), entry);
    const std::string windowClass = textOf(g_desktop_app_info_get_startup_wm_class(info));
    if (!windowClass.empty()) byWindowClass_.emplace(folded(windowClass), entry);
    addPrograms(info, entry);
  }
  g_list_free_full(all, g_object_unref);
  loaded_ = true;
}

// Of several entries with one program the one named after it is meant, not its settings or one of its tasks.
void DesktopEntries::addPrograms(GDesktopAppInfo* info, const DesktopEntry& entry) {
  if (g_desktop_app_info_get_boolean(info, "Terminal")) return;
  for (const char* key : {"Exec", "TryExec"}) {
    const std::string program = programStartedBy(wordsOf(valueOf(info, key)));
    if (program.empty()) continue;
    if (folded(shortName(entry.id)) == folded(program))
      byProgram_.insert_or_assign(program, entry);
    else
      byProgram_.emplace(program, entry);
  }
}

std::optional<DesktopEntry> DesktopEntries::startedBy(const std::string& program) {
  if (!loaded_) load();
  const auto found = byProgram_.find(program);
  return found == byProgram_.end() ? std::nullopt : std::optional(found->second);
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
