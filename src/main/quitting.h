#pragma once
#include <functional>

#include "core/app/app_model.h"

namespace nimbletype {

// Stops the application and waits for its memory: what was written last may still wait for the key that seals
// it. A session that ends does not wait long. `serve` lets the loop work until something happens, for a few
// milliseconds at most.
void quit(AppModel& model, const std::function<void()>& serve);

}  // namespace nimbletype
