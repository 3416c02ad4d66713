#include "platform/mac/system/mac_background_work.h"

#import <dispatch/dispatch.h>

#include <memory>
#include <utility>

namespace nimbletype {
namespace {

struct Run {
  std::atomic<bool> cancelled = false;
  std::function<void()> done;  // main thread only; none once it is called or cancelled
};

}  // namespace

Task MacBackgroundWork::run(std::function<void(const std::atomic<bool>&)> work, std::function<void()> done) {
  const auto run = std::make_shared<Run>();
  run->done = std::move(done);
  dispatch_group_t ended = dispatch_group_create();
  dispatch_group_async(ended, dispatch_get_global_queue(QOS_CLASS_UTILITY, 0), ^{
    work(run->cancelled);
  });
  dispatch_group_notify(ended, dispatch_get_main_queue(), ^{
    if (const auto handler = std::exchange(run->done, nullptr)) handler();
  });
  return Task([run, ended] {
    run->cancelled = true;
    dispatch_group_wait(ended, DISPATCH_TIME_FOREVER);
    run->done = nullptr;
  });
}

}  // namespace nimbletype
