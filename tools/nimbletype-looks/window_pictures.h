#pragma once
#include <filesystem>
#include <string>

namespace nimbletype {

// Takes a picture of each of the application's windows, in every state and in light and dark, and of the
// tray's icon. Files are named after what they show, then `suffix`. Needs a QApplication.
void takeWindowPictures(const std::filesystem::path& folder, const std::string& suffix);

}  // namespace nimbletype
