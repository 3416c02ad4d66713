#pragma once

namespace nimbletype {

// Whether the application's windows are dark now, as the user has chosen for all applications. Needs NSApp.
bool isAppearanceDark();

}  // namespace nimbletype
