#include "platform/linux/bus/glib_thread.h"

#include <future>

namespace nimbletype {
namespace {

using Job = std::function<void()>;
using SourcePtr = std::unique_ptr<GSource, GlibRelease<g_source_unref>>;

gboolean runOnce(gpointer job) {
  (*static_cast<Job*>(job))();
  return G_SOURCE_REMOVE;
}

void deleteJob(gpointer job) {
  delete static_cast<Job*>(job);
}

SourcePtr sourceFor(GSource* source, Job job) {
  g_source_set_callback(source, runOnce, new Job(std::move(job)), deleteJob);
  return SourcePtr(source);
}

}  // namespace

GlibThread::GlibThread()
    : context_(g_main_context_new()), loop_(g_main_loop_new(context_.get(), FALSE)), thread_([this] {
        g_main_context_push_thread_default(context_.get());
        g_main_loop_run(loop_.get());
        g_main_context_pop_thread_default(context_.get());
      }) {}

// From within, because a loop that is told to end before it runs would run all the same.
GlibThread::~GlibThread() {
  run([this] { g_main_loop_quit(loop_.get()); });
  thread_.join();
}

void GlibThread::run(const std::function<void()>& job) {
  const auto done = std::make_shared<std::promise<void>>();
  auto ran = done->get_future();
  const SourcePtr source = sourceFor(g_idle_source_new(), [&job, done] {
    job();
    done->set_value();
  });
  g_source_set_priority(source.get(), G_PRIORITY_DEFAULT);
  g_source_attach(source.get(), context_.get());
  ran.wait();
}

Task glibTimer(GMainContext* context, Milliseconds delay, std::function<void()> job) {
  SourcePtr source = sourceFor(g_timeout_source_new(static_cast<guint>(delay.count())), std::move(job));
  g_source_attach(source.get(), context);
  return Task([source = std::shared_ptr<GSource>(std::move(source))] { g_source_destroy(source.get()); });
}

}  // namespace nimbletype
