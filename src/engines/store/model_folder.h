#pragma once
#include <cstdint>
#include <filesystem>
#include <system_error>

#include "engines/store/model_spec.h"
#include "engines/store/resume_note.h"

namespace nimbletype {

// The files of one model: itself, the marker that it was checked, and what becomes of a download.
class ModelFolder {
 public:
  ModelFolder(std::filesystem::path folder, const ModelSpec& spec);

  const std::filesystem::path& path() const { return folder_; }
  std::filesystem::path model() const { return folder_ / spec_.fileName; }
  std::filesystem::path marker() const;
  std::filesystem::path incoming() const;  // complete, not yet checked
  std::filesystem::path partial() const;   // what has come so far
  std::filesystem::path note() const;      // what `partial` is a part of

  // Reads a size and a small file, never the model.
  bool isInstalled() const;
  // Whether `partial` has the model's size.
  bool isPartialWhole() const { return isComplete(partial()); }
  // How many bytes of this model a download need not fetch again.
  std::int64_t resumableBytes() const;
  // Whether a complete file is there that nobody has checked, moved to `incoming` if it was not there.
  // Whatever else was there is deleted.
  bool findIncoming() const;

  std::error_code create() const;
  // The end of a transfer: `partial` becomes `incoming`.
  std::error_code moveToIncoming() const;
  // The end of the check: `incoming` becomes the model in one step, then the marker says so.
  std::error_code install() const;
  void removeIncoming() const;
  void removePartial() const;
  // Without its note, but still the same file, which may be open.
  void emptyPartial() const;
  // All of it.
  std::error_code removeModel() const;

 private:
  bool isComplete(const std::filesystem::path& file) const;

  std::filesystem::path folder_;
  ModelSpec spec_;
};

}  // namespace nimbletype
