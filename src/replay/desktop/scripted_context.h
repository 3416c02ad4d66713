#pragma once
#include <optional>

#include "input/context/context_source.h"
#include "platform/language/region_source.h"
#include "platform/system/main_loop.h"

namespace nimbletype {

// Hands over what the script says was gathered around the field.
class ScriptedContext : public ContextSource {
 public:
  ScriptedContext(const MainLoop& loop, const RegionSource& region) : loop_(loop), region_(region) {}
  PromptContext gather(const FieldSnapshot& snapshot) override;

  // Unless the script gives them, the field's own title and site count.
  std::optional<std::string> windowTitle, domain;
  PromptContext gathered;

 private:
  const MainLoop& loop_;
  const RegionSource& region_;
};

}  // namespace nimbletype
