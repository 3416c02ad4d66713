#pragma once
#include <gtest/gtest.h>

#include <functional>

#include "platform/system/task.h"

namespace nimbletype {

// What holds of every job that a `Task` stands for: one that is dropped or replaced is never heard of again,
// and one that tells of its end may drop or replace its own task. `start` begins a job that tells of its end.
template <typename Start, typename Wait>
void expectTaskLifetimes(Start start, Wait waitFor) {
  int dropped = 0, ended = 0;
  {
    const Task gone = start([&] { ++dropped; });
  }
  Task replaced = start([&] { ++dropped; });
  replaced = start([&] { ++ended; });
  const Task moved = std::move(replaced);
  EXPECT_EQ(ended, 0) << "told before the call was over";
  waitFor("the job that took the place of another", [&] { return ended == 1; });
  Task own;
  own = start([&] {
    own = start([&] {
      own = {};
      ++ended;
    });
  });
  waitFor("the job begun by another", [&] { return ended == 2; });
  EXPECT_EQ(dropped, 0);
}

}  // namespace nimbletype
