#pragma once
#include <functional>
#include <thread>

#include "platform/linux/bus/glib_handle.h"
#include "platform/system/main_loop.h"

namespace nimbletype {

// A thread with a GLib main loop of its own, for what has to go on while the main thread waits for another
// application.
class GlibThread {
 public:
  GlibThread();
  ~GlibThread();  // what is attached to its context by then is not run any more
  GlibThread(const GlibThread&) = delete;
  GlibThread& operator=(const GlibThread&) = delete;

  GMainContext* context() const { return context_.get(); }
  // Runs there, and returns when it has run. Not to be called from that thread.
  void run(const std::function<void()>& job);

 private:
  MainContextPtr context_;
  std::unique_ptr<GMainLoop, GlibRelease<g_main_loop_unref>> loop_;
  std::thread thread_;
};

// Runs `job` once after `delay` on the thread of `context`, unless the task, which belongs to that thread as
// well, is destroyed first.
[[nodiscard]] Task glibTimer(GMainContext* context, Milliseconds delay, std::function<void()> job);

}  // namespace nimbletype
