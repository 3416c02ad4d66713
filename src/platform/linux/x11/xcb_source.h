#pragma once
#include <glib.h>

#include <functional>

#include "platform/linux/x11/xcb_support.h"

namespace nimbletype {

// Hands the events of an X connection on from a GLib main loop, that of the default context when none is
// given, those included that were read along with a reply. Made and destroyed on the thread of that loop.
class XcbSource {
 public:
  using Handler = std::function<void(const xcb_generic_event_t&)>;
  XcbSource(xcb_connection_t* connection, Handler handler, GMainContext* context = nullptr);
  ~XcbSource();
  XcbSource(const XcbSource&) = delete;
  XcbSource& operator=(const XcbSource&) = delete;

 private:
  struct Source;
  bool fetch();
  void dispatch();
  static gboolean prepare(GSource* source, gint* timeout);
  static gboolean check(GSource* source);
  static gboolean run(GSource* source, GSourceFunc, gpointer);

  xcb_connection_t* connection_;
  Handler handler_;
  XcbEvent next_;
  Source* source_ = nullptr;
  gpointer descriptor_ = nullptr;
};

}  // namespace nimbletype
