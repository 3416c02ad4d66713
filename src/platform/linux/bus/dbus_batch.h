#pragma once
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "platform/linux/bus/glib_handle.h"

namespace nimbletype {

// A moment on GLib's monotonic clock by which a piece of work has to be over.
struct Deadline {
  std::int64_t microseconds = 0;
  static Deadline in(double seconds);
  std::int64_t left() const;  // never negative
};

// One method of one remote object.
struct DBusCall {
  std::string destination, path, interface, method;
  GVariant* arguments = nullptr;  // floating, or none
};

// Several calls sent at once and awaited together. The replies arrive on a main context of this batch's own,
// so that waiting never runs anything of the main loop; what is not answered by the deadline is cancelled and
// counts as absent.
class DBusBatch {
 public:
  DBusBatch(GDBusConnection* connection, Deadline deadline);
  ~DBusBatch();
  DBusBatch(const DBusBatch&) = delete;
  DBusBatch& operator=(const DBusBatch&) = delete;

  using Id = std::size_t;
  Id call(const DBusCall& call);
  Id property(const std::string& destination, const std::string& path, const char* interface,
              const char* name);

  void wait();
  // The reply's arguments; a property's value is unwrapped. None when the call failed or was not answered.
  GVariant* reply(Id id) const;
  // Something was not answered in time.
  bool timedOut() const { return timedOut_; }

  // How often answers have been waited for so far, for measuring.
  static std::size_t roundTrips() { return roundTrips_; }

 private:
  struct Slot;
  static void answered(GObject* source, GAsyncResult* result, gpointer data);

  GDBusConnection* connection_;
  Deadline deadline_;
  MainContextPtr context_;
  GObjectPtr<GCancellable> cancellable_;
  std::vector<std::unique_ptr<Slot>> slots_;
  std::size_t open_ = 0;
  bool timedOut_ = false;
  static inline std::size_t roundTrips_ = 0;
};

}  // namespace nimbletype
