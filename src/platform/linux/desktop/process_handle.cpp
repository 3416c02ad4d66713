#include "platform/linux/desktop/process_handle.h"

#include <glib-unix.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <utility>

namespace nimbletype {

// The C library has had names for these calls only lately.
ProcessHandle::ProcessHandle(pid_t process, std::function<void()> ended)
    : descriptor_(static_cast<int>(syscall(SYS_pidfd_open, process, 0))), ended_(std::move(ended)) {
  if (!isOpen()) return;
  const auto wake = +[](gint, GIOCondition, gpointer self) -> gboolean {
    auto& handle = *static_cast<ProcessHandle*>(self);
    handle.source_ = 0;
    const auto job = std::move(handle.ended_);
    job();
    return G_SOURCE_REMOVE;
  };
  source_ = g_unix_fd_add(descriptor_, G_IO_IN, wake, this);
}

ProcessHandle::~ProcessHandle() {
  if (source_ != 0) g_source_remove(source_);
  if (isOpen()) close(descriptor_);
}

void ProcessHandle::send(int signal) const {
  if (isOpen()) syscall(SYS_pidfd_send_signal, descriptor_, signal, nullptr, 0);
}

}  // namespace nimbletype
