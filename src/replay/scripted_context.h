#pragma once
#include <optional>

#include "input/context_source.h"
#include "platform/main_loop.h"

namespace nimbletype {

// Hands over what the script says was gathered around the field.
class ScriptedContext : public ContextSource {
 public:
  explicit ScriptedContext(const MainLoop& loop) : loop_(loop) {}
  PromptContext gather(const FieldSnapshot& snapshot) override;

  // Unless the script gives them, the field's own title and site count.
  std::optional<std::string> windowTitle, domain;
  PromptContext gathered;
  std::string locale = "en_US", timeZone = "UTC";

 private:
  const MainLoop& loop_;
};

}  // namespace nimbletype
