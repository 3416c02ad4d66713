#pragma once
#include <filesystem>
#include <string>

namespace nimbletype {

// The data folder: "Nimbletype" under the user's data home.
std::filesystem::path dataFolder();
// Where the user's settings of all programs are.
std::filesystem::path configHome();
// The file of the program that runs.
std::filesystem::path runningProgram();
// The user's full name as the system knows it; the login name where it knows none.
std::string userFullName();

}  // namespace nimbletype
