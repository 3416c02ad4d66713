#include "input/context_collector.h"

#include "text/date_format.h"

namespace nimbletype {

PromptContext ContextCollector::gather(const FieldSnapshot& snapshot) {
  PromptContext context;
  context.appName = snapshot.appName;
  context.windowTitle = snapshot.windowTitle.value_or("");
  context.domain = snapshot.domain.value_or("");
  context.writerName = user_.fullName;
  context.now = text::longDate(loop_.wallNow(), user_.locale, user_.timeZone);
  return context;
}

}  // namespace nimbletype
