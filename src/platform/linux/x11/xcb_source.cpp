#include "platform/linux/x11/xcb_source.h"

namespace nimbletype {

struct XcbSource::Source {
  GSource base;
  XcbSource* owner;
};

XcbSource::XcbSource(xcb_connection_t* connection, Handler handler, GMainContext* context)
    : connection_(connection), handler_(std::move(handler)) {
  static GSourceFuncs functions{prepare, check, run, nullptr, nullptr, nullptr};
  GSource* source = g_source_new(&functions, sizeof(Source));
  source_ = reinterpret_cast<Source*>(source);
  source_->owner = this;
  descriptor_ = g_source_add_unix_fd(source, xcb_get_file_descriptor(connection_),
                                     static_cast<GIOCondition>(G_IO_IN | G_IO_HUP | G_IO_ERR));
  g_source_attach(source, context);
}

XcbSource::~XcbSource() {
  g_source_destroy(&source_->base);
  g_source_unref(&source_->base);
}

bool XcbSource::fetch() {
  if (!next_) next_.reset(xcb_poll_for_event(connection_));
  return next_ != nullptr;
}

void XcbSource::dispatch() {
  while (fetch()) {
    const XcbEvent event = std::move(next_);
    handler_(*event);
  }
}

gboolean XcbSource::prepare(GSource* source, gint* timeout) {
  *timeout = -1;
  auto* owner = reinterpret_cast<Source*>(source)->owner;
  xcb_flush(owner->connection_);
  return owner->fetch();
}

// A broken connection stays readable for ever: it is let through to `run`, which ends the source.
gboolean XcbSource::check(GSource* source) {
  auto* owner = reinterpret_cast<Source*>(source)->owner;
  return owner->fetch() || xcb_connection_has_error(owner->connection_) != 0;
}

gboolean XcbSource::run(GSource* source, GSourceFunc, gpointer) {
  auto* owner = reinterpret_cast<Source*>(source)->owner;
  owner->dispatch();
  return xcb_connection_has_error(owner->connection_) ? G_SOURCE_REMOVE : G_SOURCE_CONTINUE;
}

}  // namespace nimbletype
