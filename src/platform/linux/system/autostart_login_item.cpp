#include "platform/linux/system/autostart_login_item.h"

#include <glib.h>

#include <cerrno>
#include <memory>
#include <optional>
#include <string_view>
#include <system_error>
#include <utility>

#include "platform/linux/bus/glib_handle.h"
#include "platform/storage/atomic_file.h"

namespace nimbletype {
namespace {

constexpr const char* group = G_KEY_FILE_DESKTOP_GROUP;
constexpr const char* enabled = "X-GNOME-Autostart-enabled";

using KeyFile = std::unique_ptr<GKeyFile, GlibRelease<g_key_file_unref>>;

struct GlibFree {
  void operator()(char* text) const { g_free(text); }
};
using TextPtr = std::unique_ptr<char, GlibFree>;

// One word of a command as the Exec key takes it; what the file format itself escapes comes on top.
std::string quotedWord(std::string_view word) {
  std::string text = "\"";
  for (const char c : word) {
    if (std::string_view("\"`$\\").contains(c)) text += '\\';
    text += c;
    if (c == '%') text += c;
  }
  return text + '"';
}

std::string entryFor(const std::string& program) {
  const KeyFile file(g_key_file_new());
  const auto text = [&](const char* key, const std::string& value) {
    g_key_file_set_string(file.get(), group, key, value.c_str());
  };
  text(G_KEY_FILE_DESKTOP_KEY_TYPE, G_KEY_FILE_DESKTOP_TYPE_APPLICATION);
  text(G_KEY_FILE_DESKTOP_KEY_NAME, "Nimbletype");
  text(G_KEY_FILE_DESKTOP_KEY_ICON, "nimbletype");
  text(G_KEY_FILE_DESKTOP_KEY_EXEC, quotedWord(program));
  text(G_KEY_FILE_DESKTOP_KEY_TRY_EXEC, program);
  g_key_file_set_boolean(file.get(), group, enabled, TRUE);
  const TextPtr data(g_key_file_to_data(file.get(), nullptr, nullptr));
  return data.get();
}

std::optional<bool> flag(GKeyFile* file, const char* key) {
  GError* error = nullptr;
  const bool value = g_key_file_get_boolean(file, group, key, &error) != FALSE;
  if (!error) return value;
  g_error_free(error);
  return std::nullopt;
}

bool isInstalled(const char* program) {
  return TextPtr(g_find_program_in_path(program)) != nullptr;
}

}  // namespace

AutostartLoginItem::AutostartLoginItem(const std::filesystem::path& autostartFolder,
                                       std::filesystem::path program)
    : file_(autostartFolder / "nimbletype.desktop"), program_(std::move(program)) {}

bool AutostartLoginItem::isOn() const {
  const KeyFile file(g_key_file_new());
  if (!g_key_file_load_from_file(file.get(), file_.c_str(), G_KEY_FILE_NONE, nullptr)) return false;
  if (flag(file.get(), G_KEY_FILE_DESKTOP_KEY_HIDDEN) == true || flag(file.get(), enabled) == false)
    return false;
  const TextPtr needed(g_key_file_get_string(file.get(), group, G_KEY_FILE_DESKTOP_KEY_TRY_EXEC, nullptr));
  return (!needed || isInstalled(needed.get())) &&
         g_key_file_has_key(file.get(), group, G_KEY_FILE_DESKTOP_KEY_EXEC, nullptr);
}

std::expected<void, std::string> AutostartLoginItem::set(bool on) {
  if (on == isOn()) return {};
  std::error_code error;
  if (on) {
    errno = 0;
    if (AtomicFile(file_).write(entryFor(program_))) return {};
    error.assign(errno, std::generic_category());
  } else if (std::filesystem::remove(file_, error); !error) {
    return {};
  }
  return std::unexpected(file_.string() + ": " + error.message());
}

}  // namespace nimbletype
