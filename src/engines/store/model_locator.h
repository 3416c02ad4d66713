#pragma once
#include <optional>
#include <string>
#include <utility>

#include "engines/store/model_phase.h"

namespace nimbletype {

// Tells where the built-in model's file is.
class ModelLocator {
 public:
  virtual ~ModelLocator() = default;
  // The file to load; none until it is there and checked.
  virtual std::optional<std::string> installedModel() = 0;
  virtual ModelPhase phase() const = 0;
};

// A file somebody named. It is used as it is.
class NamedModel : public ModelLocator {
 public:
  explicit NamedModel(std::optional<std::string> path) : path_(std::move(path)) {}
  std::optional<std::string> installedModel() override { return path_; }
  ModelPhase phase() const override {
    return {path_ ? ModelPhase::Case::installed : ModelPhase::Case::notDownloaded, 0, 0, {}};
  }

 private:
  std::optional<std::string> path_;
};

}  // namespace nimbletype
