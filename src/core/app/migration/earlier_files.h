#pragma once
#include <cstdint>
#include <filesystem>
#include <set>
#include <string>
#include <vector>

namespace nimbletype {

// A file by its path within the earlier product's folder.
struct EarlierFile {
  std::filesystem::path path;
  std::uintmax_t size = 0;
  bool operator==(const EarlierFile&) const = default;
};

// What is in a folder and in those below it. Links, and what is neither file nor folder, are left out.
struct EarlierFolder {
  std::vector<EarlierFile> files;
  std::string problem;  // the last one; empty when all could be seen
};
EarlierFolder filesIn(const std::filesystem::path& folder);

// The paths of these files at which our folder has something already, if only a file where a folder would
// have to be.
std::set<std::filesystem::path> takenPlaces(const std::vector<EarlierFile>& files,
                                            const std::filesystem::path& ours);

// The files to copy, in this order. Not among them are settings and memory, which do not go as files alone,
// and hidden files, which are unfinished. The marker of a checked model goes before its model and never
// without it: it must not stand beside another file of that name.
std::vector<EarlierFile> filesToCarry(const std::vector<EarlierFile>& files,
                                      const std::set<std::filesystem::path>& taken);

}  // namespace nimbletype
