// Implements on_device_model_bridge.h where the application is built without FoundationModels.
#include <dispatch/dispatch.h>

#include "platform/mac/on_device/on_device_model_bridge.h"

int32_t nimbletype_on_device_availability() {
  return nimbletype_on_device_not_eligible;
}

void* nimbletype_on_device_respond(const char*, const char*, double, int32_t, nimbletype_on_device_done done,
                                   void* context) {
  dispatch_async(dispatch_get_main_queue(), ^{
    done(context, nimbletype_on_device_failed, "This build has no FoundationModels");
  });
  return nullptr;
}

void nimbletype_on_device_release(void*) {}

void nimbletype_on_device_prewarm(const char*) {}
