#include "replay/desktop/scripted_context.h"

#include "text/format/date_format.h"

namespace nimbletype {

PromptContext ScriptedContext::gather(const FieldSnapshot& snapshot) {
  PromptContext context = gathered;
  context.appName = snapshot.appName;
  context.windowTitle = windowTitle.value_or(snapshot.windowTitle.value_or(""));
  context.domain = domain.value_or(snapshot.domain.value_or(""));
  const Region region = region_.region();
  context.now = text::longDate(loop_.wallNow(), region.locale, region.timeZone);
  return context;
}

}  // namespace nimbletype
