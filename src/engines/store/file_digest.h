#pragma once
#include <atomic>
#include <expected>
#include <filesystem>
#include <string>
#include <system_error>

namespace nimbletype {

// The SHA-256 of a file as lower-case hex. Reads it piece by piece, so that its length costs time but no
// memory; stops between two pieces, as `operation_canceled`, when told to. Any thread.
std::expected<std::string, std::error_code> sha256OfFile(const std::filesystem::path& file,
                                                         const std::atomic<bool>& cancelled);

}  // namespace nimbletype
