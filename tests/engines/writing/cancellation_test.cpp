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

  // Once it has come to the gate.
  void cancelAtGate(LlamaRuntime::Job job) {
    auto task = start(std::move(job));
    gate.awaitArrival();
    task = Task();
    holding = false;
    gate.open();
  }

  // One whose result is kept.
  Task startKept(LlamaRuntime::Job job) {
    kept.reset();
    return runtime().run(std::move(job), {{}, [this](auto result) { kept = std::move(result); }});
  }
  void awaitKept() {
    loop.runUntil([this] { return kept.has_value(); });
  }

  int calls = 0;
  std::optional<LlamaRuntime::Result> kept;
  std::atomic<bool> holding = true;
  Gate gate;
};

TEST_F(Cancellation, StopsBetweenChunksAndKeepsWhatIsEvaluated) {
  std::atomic<std::size_t> chunks = 0;
  hooks.beforeChunk = [&](std::size_t evaluated) {
    if (holding) ++chunks;
    if (holding && evaluated == 512) gate.pass();
  };
  cancelAtGate(job(manyTokens(), 5));
  const auto next = run(job(manyTokens())).value();
  EXPECT_GT(next.promptTokens, 1024);
  EXPECT_EQ(next.reusedTokens, 512);
  EXPECT_EQ(chunks, 2U);
  EXPECT_EQ(calls, 0);
}

TEST_F(Cancellation, StopsInsideAChunkAndStaysConsistent) {
  holding = false;
  hooks.insideEvaluation = [&] {
    if (holding) gate.pass();
  };
  const auto alone = run(job("I hope this email finds", 8)).value();
  holding = true;
  cancelAtGate(job(manyTokens(), 5));
  EXPECT_LE(run(job(manyTokens())).value().reusedTokens, 1);
  EXPECT_EQ(run(job("I hope this email finds", 8)).value().text, alone.text);
  EXPECT_EQ(calls, 0);
}

TEST_F(Cancellation, StopsBetweenTokens) {
  std::atomic<int> lastToken = -1;
  hooks.beforeToken = [&](int generated) {
    if (holding) lastToken = generated;
    if (holding && generated == 3) gate.pass();
  };
  cancelAtGate(job("We are going to", 50));
  EXPECT_TRUE(run(job("We are going to", 3)).has_value());
  EXPECT_EQ(lastToken, 3);
  EXPECT_EQ(calls, 0);
}

TEST_F(Cancellation, NeitherAWaitingNorAFinishedJobTakesTheRunningOneWithIt) {
  std::atomic<int> tokens = 0;
  hooks.beforeToken = [&](int) {
    if (++tokens == 4) gate.pass();
  };
  auto finished = startKept(job("Thank you for your", 3));
  awaitKept();
  const auto running = startKept(job("Thank you for your", 3));
  gate.awaitArrival();
  auto waiting = start(job("Thank you for your", 3));
  waiting.cancel();
  finished.cancel();
  gate.open();
  awaitKept();
  EXPECT_EQ(kept->value().generatedTokens, 3);
  run(job("Thank you"));
  EXPECT_EQ(tokens, 6) << "the job that waited never started";
  EXPECT_EQ(calls, 0);
}

TEST_F(Cancellation, AResultOnItsWayIsNotDelivered) {
  auto task = start(job("Thank you for your", 2));
  const auto after = startKept(job("Thank you"));
  // Both answers are posted by now or will be; the first is cancelled before the loop turns.
  task.cancel();
  awaitKept();
  EXPECT_EQ(calls, 0);
}

TEST_F(Cancellation, CancelStopsTheRunningJobWhichSaysSo) {
  hooks.beforeToken = [&](int) {
    if (holding.exchange(false)) gate.pass();
  };
  const auto task = startKept(job("We are going to", 50));
  gate.awaitArrival();
  runtime().cancel();
  gate.open();
  awaitKept();
  EXPECT_EQ(kept->error().reason, RuntimeFailure::Case::cancelled);
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
