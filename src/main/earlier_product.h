#pragma once
#include <filesystem>

// The maker's earlier product, whose things are carried over once.
namespace nimbletype::earlier_product {

// Its settings' domain, and the name its secrets are kept under.
inline constexpr const char* domain = "app.plumlet.Plumlet";

// Its folder, beside ours.
inline std::filesystem::path folder(const std::filesystem::path& dataFolder) {
  return dataFolder.parent_path() / "Plumlet";
}

}  // namespace nimbletype::earlier_product
