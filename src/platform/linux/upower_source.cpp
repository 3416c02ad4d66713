#include "platform/linux/upower_source.h"

namespace nimbletype {

UPowerSource::UPowerSource() : cancellable_(g_cancellable_new()) {
  g_dbus_proxy_new_for_bus(G_BUS_TYPE_SYSTEM, G_DBUS_PROXY_FLAGS_NONE, nullptr, "org.freedesktop.UPower",
                           "/org/freedesktop/UPower", "org.freedesktop.UPower", cancellable_, found, this);
}

UPowerSource::~UPowerSource() {
  g_cancellable_cancel(cancellable_);
  g_object_unref(cancellable_);
  g_clear_object(&proxy_);
}

void UPowerSource::found(GObject*, GAsyncResult* result, gpointer self) {
  GError* error = nullptr;
  GDBusProxy* proxy = g_dbus_proxy_new_for_bus_finish(result, &error);
  // When it was cancelled, the object is gone already.
  if (proxy)
    static_cast<UPowerSource*>(self)->proxy_ = proxy;
  else
    g_error_free(error);
}

bool UPowerSource::onBattery() const {
  GVariant* value = proxy_ ? g_dbus_proxy_get_cached_property(proxy_, "OnBattery") : nullptr;
  if (!value) return false;
  const bool battery = g_variant_is_of_type(value, G_VARIANT_TYPE_BOOLEAN) && g_variant_get_boolean(value);
  g_variant_unref(value);
  return battery;
}

bool UPowerSource::isReachable() const {
  gchar* owner = proxy_ ? g_dbus_proxy_get_name_owner(proxy_) : nullptr;
  const bool reachable = owner != nullptr;
  g_free(owner);
  return reachable;
}

}  // namespace nimbletype
