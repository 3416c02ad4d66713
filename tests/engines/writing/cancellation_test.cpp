// Jobs nobody waits for any more. The model's thread is held at a known place while the test cancels.
#include <atomic>

#include "tests/engines/writing/runtime_fixture.h"

namespace nimbletype {
namespace {

class Cancellation : public RuntimeFixture {
 protected:
  // A prompt of some 1500 tokens, three chunks.
  static std::string manyTokens() {
    std::string text;
    for (int i = 0; i < 140; ++i) text += "Please send me the report for room " + std::to_string(i) + ". ";
    return text;
  }

  Task start(LlamaRuntime::Job job) {
    return runtime().run(std::move(job),
                         {[this](const std::string&) { ++calls; }, [this](auto) { ++calls; }});
  }

  int calls = 0;
  Gate gate;
};

TEST_F(Cancellation, StopsBetweenChunksAndKeepsWhatIsEvaluated) {
  std::atomic<std::size_t> chunks = 0;
  std::atomic<bool> holding = true;
  hooks.beforeChunk = [&](std::size_t evaluated) {
    if (!holding) return;
    ++chunks;
    if (evaluated == 512) gate.pass();
  };
  auto task = start(job(manyTokens(), 5));
  gate.awaitArrival();
  task.cancel();
  const auto stoppedAfter = chunks.load();
  holding = false;
  gate.open();
  const auto next = run(job(manyTokens())).value();
  EXPECT_GT(next.promptTokens, 1024);
  EXPECT_EQ(next.reusedTokens, 512);
  EXPECT_EQ(stoppedAfter, 2U);
  EXPECT_EQ(calls, 0);
}

TEST_F(Cancellation, StopsInsideAChunkAndStaysConsistent) {
  std::atomic<bool> holding = false;
  hooks.insideEvaluation = [&] {
    if (holding) gate.pass();
  };
  const auto alone = run(job("I hope this email finds", 8)).value();
  holding = true;
  auto task = start(job(manyTokens(), 5));
  gate.awaitArrival();
  task.cancel();
  holding = false;
  gate.open();
  const auto next = run(job(manyTokens())).value();
  EXPECT_LE(next.reusedTokens, 1);
  EXPECT_EQ(run(job("I hope this email finds", 8)).value().text, alone.text);
  EXPECT_EQ(calls, 0);
}

TEST_F(Cancellation, StopsBetweenTokens) {
  std::atomic<int> lastToken = -1;
  std::atomic<bool> holding = true;
  hooks.beforeToken = [&](int generated) {
    if (!holding) return;
    lastToken = generated;
    if (generated == 3) gate.pass();
  };
  auto task = start(job("We are going to", 50, 1.0));
  gate.awaitArrival();
  task = Task();
  holding = false;
  gate.open();
  EXPECT_TRUE(run(job("We are going to", 3)).has_value());
  EXPECT_EQ(lastToken, 3);
  EXPECT_EQ(calls, 0);
}

TEST_F(Cancellation, AJobThatWaitsNeverStartsAndTheRunningOneGoesOn) {
  std::atomic<int> held = 0;
  hooks.beforeToken = [&](int) {
    if (held++ == 0) gate.pass();
  };
  std::optional<LlamaRuntime::Result> first;
  const auto running =
      runtime().run(job("Thank you for your", 3), {{}, [&](auto result) { first = std::move(result); }});
  gate.awaitArrival();
  auto waiting = start(job("Thank you for your", 3));
  waiting.cancel();
  gate.open();
  loop.runUntil([&] { return first.has_value(); });
  EXPECT_EQ(first->value().generatedTokens, 3);
  run(job("Thank you"));
  EXPECT_EQ(held, 3);
  EXPECT_EQ(calls, 0);
}

TEST_F(Cancellation, AFinishedTaskStopsNothing) {
  std::atomic<int> held = 0;
  hooks.beforeToken = [&](int) {
    if (++held == 4) gate.pass();
  };
  bool finished = false;
  auto old = runtime().run(job("Thank you for your", 3), {{}, [&](auto) { finished = true; }});
  loop.runUntil([&] { return finished; });
  std::optional<LlamaRuntime::Result> second;
  const auto task =
      runtime().run(job("Thank you for your", 3), {{}, [&](auto result) { second = std::move(result); }});
  gate.awaitArrival();
  old.cancel();
  gate.open();
  loop.runUntil([&] { return second.has_value(); });
  EXPECT_TRUE(second->has_value());
}

TEST_F(Cancellation, AResultOnItsWayIsNotDelivered) {
  auto task = start(job("Thank you for your", 2));
  bool barrier = false;
  const auto after = runtime().run(job("Thank you"), {{}, [&](auto) { barrier = true; }});
  // Both answers are posted by now or will be; the first is cancelled before the loop turns.
  task.cancel();
  loop.runUntil([&] { return barrier; });
  EXPECT_EQ(calls, 0);
}

TEST_F(Cancellation, CancelStopsTheRunningJobWhichSaysSo) {
  std::atomic<bool> holding = true;
  hooks.beforeToken = [&](int) {
    if (holding.exchange(false)) gate.pass();
  };
  std::optional<LlamaRuntime::Result> result;
  const auto task =
      runtime().run(job("We are going to", 50), {{}, [&](auto answer) { result = std::move(answer); }});
  gate.awaitArrival();
  runtime().cancel();
  gate.open();
  loop.runUntil([&] { return result.has_value(); });
  EXPECT_EQ(result->error().reason, RuntimeFailure::Case::cancelled);
}

TEST_F(Cancellation, TheRuntimeEndsWhileAJobRuns) {
  Task task;
  {
    hooks.beforeToken = [this](int) { gate.pass(); };
    LlamaRuntime ending(loop, log, options, hooks);
    task = ending.run(job("We are going to", 50), {{}, [this](auto) { ++calls; }});
    gate.awaitArrival();
    gate.open();
  }
  task.cancel();
  loop.runPosted();
  EXPECT_EQ(calls, 0);
}

}  // namespace
}  // namespace nimbletype
