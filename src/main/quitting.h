#pragma once
#include "core/app/app_model.h"

namespace nimbletype {

// Stops the application and waits for its memory: what was written last may still wait for the key that seals
// it. A session that ends does not wait long, and whatever still holds the process after that, such as a
// model on its way from the disk, goes down with it: everything is saved by then. Needs a QCoreApplication.
void quit(AppModel& model, int status);

}  // namespace nimbletype
