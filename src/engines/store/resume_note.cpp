#include "engines/store/resume_note.h"

#include <fstream>
#include <nlohmann/json.hpp>

namespace nimbletype {
namespace {

// The keys have a type of their own to keep a hand-edited note from throwing.
std::string textOf(const nlohmann::json& json, const char* key) {
  const auto found = json.find(key);
  return found != json.end() && found->is_string() ? found->get<std::string>() : std::string();
}

}  // namespace

std::optional<ResumeNote> readResumeNote(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  const auto json = nlohmann::json::parse(stream, nullptr, false);
  if (!json.is_object()) return std::nullopt;
  ResumeNote note{textOf(json, "url"), textOf(json, "digest"), textOf(json, "validator")};
  if (note.url.empty() || note.digest.empty()) return std::nullopt;
  return note;
}

void writeResumeNote(const std::filesystem::path& file, const ResumeNote& note) {
  const nlohmann::ordered_json json{
      {"url", note.url}, {"digest", note.digest}, {"validator", note.validator}};
  std::ofstream(file, std::ios::binary)
      << json.dump(2, ' ', false, nlohmann::json::error_handler_t::replace) << '\n';
}

}  // namespace nimbletype
