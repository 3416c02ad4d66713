#pragma once
#include <cstdint>
#include <string>

namespace nimbletype {

// How far the built-in model's file is.
struct ModelPhase {
  enum class Case { notDownloaded, downloading, checking, installed, failed };
  Case state = Case::notDownloaded;
  std::int64_t bytesWritten = 0, bytesExpected = 0;  // of `downloading`
  std::string message;                               // of `failed`: one finished sentence
  bool operator==(const ModelPhase&) const = default;
};

}  // namespace nimbletype
