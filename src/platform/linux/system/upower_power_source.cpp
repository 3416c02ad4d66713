#include "platform/linux/system/upower_power_source.h"

namespace nimbletype {

UPowerPowerSource::UPowerPowerSource() : cancellable_(g_cancellable_new()) {
  g_dbus_proxy_new_for_bus(G_BUS_TYPE_SYSTEM, G_DBUS_PROXY_FLAGS_NONE, nullptr, "org.freedesktop.UPower",
                           "/org/freedesktop/UPower", "org.freedesktop.UPower", cancellable_.get(), found,
                           this);
}

UPowerPowerSource::~UPowerPowerSource() {
  g_cancellable_cancel(cancellable_.get());
  if (proxy_) g_signal_handlers_disconnect_by_data(proxy_.get(), this);
}

void UPowerPowerSource::found(GObject*, GAsyncResult* result, gpointer self) {
  GError* error = nullptr;
  GDBusProxy* proxy = g_dbus_proxy_new_for_bus_finish(result, &error);
  // When it was cancelled, the object is gone already.
  if (!proxy) return g_error_free(error);
  auto& source = *static_cast<UPowerPowerSource*>(self);
  source.proxy_.reset(proxy);
  g_dbus_connection_set_exit_on_close(g_dbus_proxy_get_connection(proxy), FALSE);
  source.listen();
}

void UPowerPowerSource::listen() {
  const auto tell = +[](UPowerPowerSource* source) {
    if (source->changed_) source->changed_();
  };
  for (const char* signal : {"g-properties-changed", "notify::g-name-owner"})
    g_signal_connect_swapped(proxy_.get(), signal, G_CALLBACK(tell), this);
  tell(this);
}

bool UPowerPowerSource::onBattery() const {
  const VariantPtr value(proxy_ ? g_dbus_proxy_get_cached_property(proxy_.get(), "OnBattery") : nullptr);
  return value && g_variant_is_of_type(value.get(), G_VARIANT_TYPE_BOOLEAN) &&
         g_variant_get_boolean(value.get());
}

bool UPowerPowerSource::isReachable() const {
  gchar* owner = proxy_ ? g_dbus_proxy_get_name_owner(proxy_.get()) : nullptr;
  const bool reachable = owner != nullptr;
  g_free(owner);
  return reachable;
}

}  // namespace nimbletype
