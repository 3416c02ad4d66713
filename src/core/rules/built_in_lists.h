#pragma once
#include <span>
#include <string_view>

namespace nimbletype {

// An outside application that is treated specially unless a rule says otherwise.
struct KnownApp {
  std::string_view name;  // for people
  std::string_view bundleID;
};

// Terminals and password managers.
std::span<const KnownApp> appsOffByDefault();
std::span<const KnownApp> codeEditors();

bool isOffByDefault(std::string_view bundleID);
// All JetBrains IDEs count, listed or not.
bool isCodeEditor(std::string_view bundleID);

}  // namespace nimbletype
