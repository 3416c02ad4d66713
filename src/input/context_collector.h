#pragma once
#include <string>

#include "input/context_source.h"
#include "platform/main_loop.h"

namespace nimbletype {

// The person at the keyboard, as the desktop knows them. Empty locale and time zone: the desktop's own.
struct UserIdentity {
  std::string fullName;
  std::string locale;
  std::string timeZone;
};

// Gathers what surrounds the field being written in.
class ContextCollector : public ContextSource {
 public:
  ContextCollector(const MainLoop& loop, UserIdentity user) : loop_(loop), user_(std::move(user)) {}
  PromptContext gather(const FieldSnapshot& snapshot) override;

 private:
  const MainLoop& loop_;
  UserIdentity user_;
};

}  // namespace nimbletype
