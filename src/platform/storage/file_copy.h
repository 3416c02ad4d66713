#pragma once
#include <atomic>
#include <filesystem>
#include <system_error>

namespace nimbletype {

// Copies a file whole or not at all: the copy is made beside its place under a hidden name, reaches the disk
// and takes its place; one that was cut short is begun anew by the next try. Makes missing folders. What
// stands at the place already stays there, and is an error; a link is not followed, and is one as well. The
// copy is for its owner's eyes only. Stops early, as `operation_canceled`, when told to. Any thread.
std::error_code copyWhole(const std::filesystem::path& from, const std::filesystem::path& to,
                          const std::atomic<bool>& cancelled);

}  // namespace nimbletype
