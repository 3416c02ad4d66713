#pragma once
#include <functional>
#include <optional>
#include <string>

#include "core/completion/asking/field_session.h"
#include "core/completion/deciding/own_change.h"
#include "input/field/field_source.h"
#include "personal/stats/stats_store.h"

namespace nimbletype {

// A text to be put in at the caret, in place of the text that stands right before it.
struct Swap {
  std::string replaced, text;
  bool operator==(const Swap&) const = default;
};

// What taking an offer does to the field.
struct Taken {
  Swap swap;
  std::string counted{};  // what of it counts as a suggestion taken; fixes and emoji do not
  bool isAll = false;     // the field is to be read again soon
};

// Puts text into the field, and knows it again when the field tells of it. Main thread only.
class Hand {
 public:
  struct Services {
    MainLoop& loop;
    StatsStore& stats;
    FieldSession& session;
  };
  using Read = std::function<void(const FieldSnapshot&)>;

  explicit Hand(const Services& services) : s_(services) {}

  // The source must outlive the hand. `read` is told of what was read again after an insertion.
  void setSource(FieldSource& source, Read read);
  bool hasSource() const { return source_ != nullptr; }

  // What is replaced must stand before the snapshot's caret.
  void put(const Taken& taken, const FieldSnapshot& snapshot, InsertionMethod method);

  // The field's text, selection or focus is another one. What was put in is forgotten once something else has
  // happened to it, so that the same text counts as the user's when they write it later.
  void follow(const FieldSnapshot& snapshot);
  // Whether this change is our own, or comes too soon after one to be answered.
  bool isOwn(const FieldSnapshot& snapshot) const;
  // For a change that is not our own but came too soon: how long until it may be answered.
  std::optional<Milliseconds> patience() const;
  // Whether the caret only seems to stand inside text, because an insertion is still on its way.
  bool isCaretLate(const FieldSnapshot& snapshot) const;

 private:
  bool isSettling() const { return latest_ && s_.loop.now() - latest_->time < Injection::settling; }
  void remember(const Swap& swap, const FieldSnapshot& snapshot);
  void readAgain(std::size_t attempt);

  Services s_;
  FieldSource* source_ = nullptr;
  std::optional<Injection> latest_;
  bool hasArrived_ = false, isForgotten_ = false;
  Read read_;
  Task readAgain_;
};

}  // namespace nimbletype
