#pragma once
#include "tools/stage/scene/scene.h"

namespace nimbletype {

// Prints what the application costs while nothing happens: start-up time, memory, and how often it wakes up.
void measureResources(const Scene::Cast& cast);

}  // namespace nimbletype
