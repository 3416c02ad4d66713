#pragma once
#include <optional>
#include <string>

#include "input/context/context_source.h"
#include "platform/system/main_loop.h"

namespace nimbletype {

// Keeps the gathered context for one visit to a field, so that prompts share their beginning while the user
// types. It is gathered anew in another field or window, after a typing pause, and when something is known to
// have changed.
class ContextCache {
 public:
  static constexpr Milliseconds pause{3000};

  ContextCache(ContextSource& source, MainLoop& loop) : source_(source), loop_(loop) {}
  const PromptContext& contextFor(const FieldSnapshot& snapshot);
  void invalidate() { context_.reset(); }

 private:
  ContextSource& source_;
  MainLoop& loop_;
  // What a snapshot tells of its surroundings: gathered text belongs to one of these.
  struct Place {
    std::string fieldKey, bundleID, appName;
    std::optional<std::string> windowTitle, domain;
    bool operator==(const Place&) const = default;
  };

  std::optional<PromptContext> context_;
  Place place_;
  MonotonicTime lastUse_;
};

}  // namespace nimbletype
