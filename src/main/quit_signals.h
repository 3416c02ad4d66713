#pragma once

namespace nimbletype {

// Ends the event loop in good order when the session ends or the user interrupts the program, so that nothing
// waiting to be saved is lost. Needs a running application object; call once.
void quitOnSignals();

}  // namespace nimbletype
