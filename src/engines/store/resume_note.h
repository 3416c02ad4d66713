#pragma once
#include <filesystem>
#include <optional>
#include <string>

namespace nimbletype {

// What must be remembered of an interrupted download to go on with it: a small JSON file beside the bytes.
struct ResumeNote {
  std::string url;
  std::string digest;     // of the whole file that was being fetched
  std::string validator;  // the server's name for the file's version (ETag or date); empty when it gave none
  bool operator==(const ResumeNote&) const = default;
};

// None when there is none, or it makes no sense.
std::optional<ResumeNote> readResumeNote(const std::filesystem::path& file);
// A note that cannot be written only costs the chance to resume.
void writeResumeNote(const std::filesystem::path& file, const ResumeNote& note);

}  // namespace nimbletype
