#include "platform/linux/system/linux_system_settings.h"

#include <utility>

namespace nimbletype {
namespace {

constexpr const char* portalName = "org.freedesktop.portal.Desktop";
constexpr const char* portalPath = "/org/freedesktop/portal/desktop";
constexpr const char* portalInterface = "org.freedesktop.portal.Settings";
constexpr const char* gnome = "org.gnome.desktop.interface";

VariantPtr unwrapped(const VariantPtr& v) {
  if (!v || !g_variant_is_of_type(v.get(), G_VARIANT_TYPE_VARIANT)) return nullptr;
  return VariantPtr(g_variant_get_variant(v.get()));
}

// Of a reply of the form (a{sa{sv}}): settings by key, by space.
DesktopChoices choicesIn(GVariant* reply) {
  DesktopChoices choices;
  if (!reply || !g_variant_is_of_type(reply, G_VARIANT_TYPE("(a{sa{sv}})"))) return choices;
  const auto spaces = childOf(reply, 0);
  for (gsize i = 0; i < g_variant_n_children(spaces.get()); ++i) {
    const auto space = childOf(spaces.get(), i);
    const auto name = childOf(space.get(), 0), settings = childOf(space.get(), 1);
    for (gsize j = 0; j < g_variant_n_children(settings.get()); ++j) {
      const auto setting = childOf(settings.get(), j);
      const auto key = childOf(setting.get(), 0);
      choices.take(stringOf(name.get()), stringOf(key.get()), unwrapped(childOf(setting.get(), 1)).get());
    }
  }
  return choices;
}

// None where the desktop does not bring them along; asking for what is missing would end the program.
GSettings* gnomeSettings() {
  GSettingsSchemaSource* source = g_settings_schema_source_get_default();
  GSettingsSchema* schema = source ? g_settings_schema_source_lookup(source, gnome, TRUE) : nullptr;
  if (!schema) return nullptr;
  GSettings* settings = g_settings_new_full(schema, nullptr, nullptr);
  g_settings_schema_unref(schema);
  return settings;
}

bool has(GSettings* settings, const char* key) {
  GSettingsSchema* schema = nullptr;
  g_object_get(settings, "settings-schema", &schema, nullptr);
  const bool found = g_settings_schema_has_key(schema, key);
  g_settings_schema_unref(schema);
  return found;
}

DesktopChoices choicesIn(GSettings* settings) {
  DesktopChoices choices;
  for (const char* key : {"gtk-theme", "enable-animations"})
    if (has(settings, key)) choices.take(gnome, key, VariantPtr(g_settings_get_value(settings, key)).get());
  // The portal's numbers are those of this enumeration.
  if (has(settings, "color-scheme"))
    choices.colorScheme = static_cast<std::uint32_t>(g_settings_get_enum(settings, "color-scheme"));
  return choices;
}

}  // namespace

LinuxSystemSettings::LinuxSystemSettings()
    : watch_(portalName, [this](GDBusConnection* portal) { follow(portal); }) {}

LinuxSystemSettings::~LinuxSystemSettings() {
  if (settings_) g_signal_handlers_disconnect_by_data(settings_.get(), this);
}

void LinuxSystemSettings::follow(GDBusConnection* portal) {
  signals_ = {};
  question_ = {};
  if (!portal) return followSettings();
  if (settings_) g_signal_handlers_disconnect_by_data(settings_.get(), this);
  settings_.reset();
  signals_ =
      dbusSignals(portal, portalName, portalInterface, [this](const std::string& signal, GVariant* change) {
        if (signal != "SettingChanged" || !g_variant_is_of_type(change, G_VARIANT_TYPE("(ssv)"))) return;
        const auto space = childOf(change, 0), key = childOf(change, 1);
        DesktopChoices now = choices_;
        now.take(stringOf(space.get()), stringOf(key.get()), unwrapped(childOf(change, 2)).get());
        become(now);
      });
  ask(portal);
}

void LinuxSystemSettings::ask(GDBusConnection* portal) {
  question_ = dbusRequest(portal,
                          {portalName, portalPath, portalInterface, "ReadAll",
                           g_variant_new_parsed("(['org.freedesktop.appearance', %s],)", gnome)},
                          [this](GVariant* reply) { reply ? become(choicesIn(reply)) : followSettings(); });
}

void LinuxSystemSettings::followSettings() {
  settings_.reset(gnomeSettings());
  if (!settings_) return become({});
  g_signal_connect_swapped(
      settings_.get(), "changed",
      G_CALLBACK(+[](LinuxSystemSettings* self) { self->become(choicesIn(self->settings_.get())); }), this);
  become(choicesIn(settings_.get()));
}

void LinuxSystemSettings::become(const DesktopChoices& choices) {
  const DesktopChoices before = std::exchange(choices_, choices);
  if (before.prefersDark() == prefersDark() && before.reducesMotion() == reducesMotion()) return;
  const auto changed = changed_;  // it may end itself
  if (changed) changed();
}

}  // namespace nimbletype
