#pragma once
#include <functional>

#include "input/keys/key_tap.h"
#include "input/monitors/permissions.h"
#include "platform/system/system_log.h"

namespace nimbletype {

// Follows the user's typing while the desktop allows it: the key tap runs then, and is let go of when the
// permission goes, since a tap without one may hold up every key of the desktop. A tap that the desktop
// refused or took away is asked for again now and then.
class SystemWideWatch {
 public:
  static constexpr Milliseconds retryInterval{30'000};

  // `begin` is called once, when fields can be read for the first time.
  SystemWideWatch(Permissions& permissions, KeyTap& tap, MainLoop& loop, SystemLog& log,
                  std::function<void()> begin);
  SystemWideWatch(const SystemWideWatch&) = delete;
  SystemWideWatch& operator=(const SystemWideWatch&) = delete;

  // Whether the tap runs; when it does not, it is started with the permission.
  bool start();
  void stop();

 private:
  void allowed();
  void logStart();
  void retryLater();

  Permissions& permissions_;
  KeyTap& tap_;
  MainLoop& loop_;
  SystemLog& log_;
  std::function<void()> begin_;  // empty once called
  Task observation_, retry_;
};

}  // namespace nimbletype
