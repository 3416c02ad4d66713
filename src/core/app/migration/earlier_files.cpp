#include "core/app/migration/earlier_files.h"

#include <algorithm>
#include <iterator>
#include <system_error>

namespace nimbletype {
namespace {

namespace fs = std::filesystem;

void collect(const fs::path& root, const fs::path& folder, EarlierFolder& found);

void note(const fs::path& root, const fs::path& path, EarlierFolder& found) {
  std::error_code error;
  const auto status = fs::symlink_status(root / path, error);
  if (fs::is_directory(status)) return collect(root, path, found);
  if (!fs::is_regular_file(status)) return;
  const auto size = fs::file_size(root / path, error);
  if (!error) found.files.push_back({path, size});
}

void collect(const fs::path& root, const fs::path& folder, EarlierFolder& found) {
  std::error_code error;
  for (fs::directory_iterator entry(root / folder, error), end; !error && entry != end;
       entry.increment(error))
    note(root, folder / entry->path().filename(), found);
  if (error) found.problem = (root / folder).filename().string() + ": " + error.message();
}

bool isTaken(const fs::path& ours, const fs::path& file) {
  std::error_code error;
  for (auto place = file; !place.empty(); place = place.parent_path())
    if (fs::exists(fs::symlink_status(ours / place, error)))
      return place == file || !fs::is_directory(ours / place, error);
  return false;
}

bool isHidden(const fs::path& path) {
  return std::ranges::any_of(path, [](const fs::path& part) { return part.string().starts_with('.'); });
}

bool goesAsFile(const fs::path& path) {
  return !isHidden(path) && path != "settings.json" && !path.string().starts_with("memory.sealed");
}

bool isMarker(const EarlierFile& file) {
  return file.path.extension() == ".verified";
}

}  // namespace

EarlierFolder filesIn(const fs::path& folder) {
  EarlierFolder found;
  std::error_code error;
  if (fs::is_directory(folder, error)) collect(folder, {}, found);
  return found;
}

std::set<fs::path> takenPlaces(const std::vector<EarlierFile>& files, const fs::path& ours) {
  std::set<fs::path> taken;
  for (const auto& file : files)
    if (isTaken(ours, file.path)) taken.insert(file.path);
  return taken;
}

std::vector<EarlierFile> filesToCarry(const std::vector<EarlierFile>& files,
                                      const std::set<fs::path>& taken) {
  const auto isMissing = [&](const fs::path& path) { return goesAsFile(path) && !taken.contains(path); };
  const auto modelGoes = [&](const EarlierFile& marker) {
    auto model = marker.path;
    model.replace_extension();
    return isMissing(model) && std::ranges::find(files, model, &EarlierFile::path) != files.end();
  };
  std::vector<EarlierFile> carried;
  std::ranges::copy_if(files, std::back_inserter(carried), [&](const EarlierFile& file) {
    return isMissing(file.path) && (!isMarker(file) || modelGoes(file));
  });
  std::ranges::stable_partition(carried, isMarker);
  return carried;
}

}  // namespace nimbletype
