#pragma once
#include <functional>
#include <list>
#include <memory>

#include "platform/system/background_work.h"
#include "platform/system/main_loop.h"

namespace nimbletype {

// Work runs on the main loop, each piece with its `done` in a turn of its own, or waits until it is let go.
class ScriptedBackgroundWork final : public BackgroundWork {
 public:
  explicit ScriptedBackgroundWork(MainLoop& loop) : loop_(loop) {}

  [[nodiscard]] Task run(std::function<void(const std::atomic<bool>& cancelled)> work,
                         std::function<void()> done) override;

  // What has not run yet, and what is started from now on, waits for `release`.
  void hold() { held_ = true; }
  // Lets everything run, in the order in which it was started.
  void release();
  // Pieces that are neither done nor cancelled.
  std::size_t waiting() const { return jobs_->size(); }

 private:
  struct Job {
    std::function<void(const std::atomic<bool>&)> work;
    std::function<void()> done;
  };
  using Jobs = std::list<std::shared_ptr<Job>>;
  void runNextLater();

  MainLoop& loop_;
  bool held_ = false;
  std::shared_ptr<Jobs> jobs_ = std::make_shared<Jobs>();  // tasks may outlive this object
  Task turn_;
};

}  // namespace nimbletype
