#pragma once
#include <filesystem>

namespace nimbletype {

// The application's folder under the user's application-support folder, made where it is missing.
std::filesystem::path dataFolder();

}  // namespace nimbletype
