#pragma once
#include <functional>
#include <optional>
#include <string>

#include "core/completion/asking/generation.h"
#include "core/completion/asking/request_maker.h"

namespace nimbletype {

// The request under way: what it was made for and what has been written so far, told at most once a frame and
// in whole words while it grows. Starting another, cancelling and destroying it end it without a word.
class RunningRequest {
 public:
  static constexpr Milliseconds frame{16};

  // A text of the request, cleaned; what it was asked for may not stand in the field any more.
  struct Written {
    const FieldSnapshot& askedFor;
    std::string text;
    bool isFirst = false;  // there was nothing to read before
    Milliseconds took{0};
  };
  using Grown = std::function<void(Written)>;
  // The whole text; or the sentence that says why there is none, after which what has grown so far still
  // holds.
  using Ended = std::function<void(std::expected<Written, ProviderError>)>;
  // The last generation, for diagnostics: what was asked and answered, and how long it took.
  struct Record {
    Milliseconds latency{0};
    std::string prompt, output;
    CompletionCost cost;
  };

  explicit RunningRequest(MainLoop& loop) : loop_(loop), generation_(loop) {}
  void start(const Question& question, const FieldSnapshot& snapshot, Grown grown, Ended ended);
  void cancel();
  bool isRunning() const { return asked_.has_value(); }
  // Called when the first of a text arrives, cleaned or not.
  void onFirstText(std::function<void()> arrived) { arrived_ = std::move(arrived); }

  // Whether the engine asked last shows its text while it writes.
  bool streaming() const { return streaming_; }
  const Record& last() const { return last_; }

 private:
  struct Asked {
    FieldSnapshot snapshot;
    ReplyCleaner clean;
    std::string text;
    bool drawingSoon = false;
    bool told = false;
  };

  void grow(const std::string& textSoFar);
  void tell();
  void finish(Generation::Outcome outcome);
  Written written(Asked& asked, std::string text) const;

  MainLoop& loop_;
  Generation generation_;
  std::optional<Asked> asked_;
  Grown grown_;
  Ended ended_;
  std::function<void()> arrived_;
  Task soon_;
  bool streaming_ = false;
  Record last_;
};

}  // namespace nimbletype
