#pragma once
#include <stdint.h>

// The system's language model as C sees it: FoundationModels speaks Swift alone. Main thread only. Texts are
// UTF-8 and end with a zero.
#ifdef __cplusplus
extern "C" {
#endif

enum {
  nimbletype_on_device_available,
  nimbletype_on_device_not_eligible,
  nimbletype_on_device_not_enabled,
  nimbletype_on_device_not_ready,
  nimbletype_on_device_unavailable
};
int32_t nimbletype_on_device_availability(void);

enum {
  nimbletype_on_device_answered,  // the text is the answer
  nimbletype_on_device_refused,   // the guardrails forbade it; the text is empty
  nimbletype_on_device_failed     // the text is the system's description
};
// Called once on the main thread in a later turn, cancelled or not. The text is gone afterwards.
typedef void (*nimbletype_on_device_done)(void* context, int32_t outcome, const char* text);

// The handle of the request, to be released.
void* nimbletype_on_device_respond(const char* instructions, const char* prompt, double temperature,
                                   int32_t max_tokens, nimbletype_on_device_done done, void* context);
// Cancels the request unless it is over.
void nimbletype_on_device_release(void* request);

void nimbletype_on_device_prewarm(const char* instructions);

#ifdef __cplusplus
}
#endif
