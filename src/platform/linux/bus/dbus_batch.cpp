#include "platform/linux/bus/dbus_batch.h"

#include <algorithm>

namespace nimbletype {

Deadline Deadline::in(double seconds) {
  return {g_get_monotonic_time() + static_cast<std::int64_t>(seconds * G_USEC_PER_SEC)};
}

std::int64_t Deadline::left() const {
  return std::max<std::int64_t>(0, microseconds - g_get_monotonic_time());
}

struct DBusBatch::Slot {
  DBusBatch* batch;
  bool isProperty;
  VariantPtr reply;
};

DBusBatch::DBusBatch(GDBusConnection* connection, Deadline deadline)
    : connection_(connection),
      deadline_(deadline),
      context_(g_main_context_new()),
      cancellable_(g_cancellable_new()) {}

DBusBatch::~DBusBatch() {
  if (open_ == 0) return;
  deadline_ = {};
  wait();
}

DBusBatch::Id DBusBatch::call(const DBusCall& call) {
  slots_.push_back(std::make_unique<Slot>(
      Slot{this, call.interface == "org.freedesktop.DBus.Properties" && call.method == "Get", nullptr}));
  ++open_;
  g_main_context_push_thread_default(context_.get());
  g_dbus_connection_call(connection_, call.destination.c_str(), call.path.c_str(), call.interface.c_str(),
                         call.method.c_str(), call.arguments, nullptr, G_DBUS_CALL_FLAGS_NO_AUTO_START,
                         G_MAXINT, cancellable_.get(), answered, slots_.back().get());
  g_main_context_pop_thread_default(context_.get());
  return slots_.size() - 1;
}

DBusBatch::Id DBusBatch::property(const std::string& destination, const std::string& path,
                                  const char* interface, const char* name) {
  return call(
      {destination, path, "org.freedesktop.DBus.Properties", "Get", g_variant_new("(ss)", interface, name)});
}

void DBusBatch::answered(GObject* source, GAsyncResult* result, gpointer data) {
  auto* slot = static_cast<Slot*>(data);
  --slot->batch->open_;
  slot->reply.reset(g_dbus_connection_call_finish(G_DBUS_CONNECTION(source), result, nullptr));
  if (!slot->reply || !slot->isProperty) return;
  const VariantPtr wrapped = childOf(slot->reply.get(), 0);
  slot->reply.reset(wrapped ? g_variant_get_variant(wrapped.get()) : nullptr);
}

// The time-out is a source of the same context: a hung application costs exactly what is left, and a
// cancelled call completes on this context at once, so nothing outlives the batch.
void DBusBatch::wait() {
  if (open_ == 0) return;
  ++roundTrips_;
  bool late = false;
  GSource* timer = g_timeout_source_new(static_cast<guint>((deadline_.left() + 999) / 1000));
  g_source_set_callback(
      timer,
      [](gpointer flag) -> gboolean {
        *static_cast<bool*>(flag) = true;
        return G_SOURCE_REMOVE;
      },
      &late, nullptr);
  g_source_attach(timer, context_.get());
  while (open_ > 0 && !late) g_main_context_iteration(context_.get(), TRUE);
  g_source_destroy(timer);
  g_source_unref(timer);
  if (open_ == 0) return;
  timedOut_ = true;
  g_cancellable_cancel(cancellable_.get());
  while (open_ > 0) g_main_context_iteration(context_.get(), TRUE);
}

GVariant* DBusBatch::reply(Id id) const {
  return slots_[id]->reply.get();
}

}  // namespace nimbletype
