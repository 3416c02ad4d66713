#pragma once
#include <array>
#include <optional>
#include <string_view>

namespace nimbletype {

// The setting enumerations. Raw values are the persisted form.
enum class CompletionLength { shortLength, medium, longLength };
enum class EngineKind { builtIn, apple, ollama, openAI };
enum class EscapeBehavior { dismiss, dismissForField, passThrough };
enum class InsertionMethod { typing, accessibility, paste };
enum class GhostStyle { grey, tinted };

template <typename Enum>
struct RawValues;
template <>
struct RawValues<CompletionLength> {
  static constexpr std::array<std::string_view, 3> all{"short", "medium", "long"};
};
template <>
struct RawValues<EngineKind> {
  static constexpr std::array<std::string_view, 4> all{"builtIn", "apple", "ollama", "openAI"};
};
template <>
struct RawValues<EscapeBehavior> {
  static constexpr std::array<std::string_view, 3> all{"dismiss", "dismissForField", "passThrough"};
};
template <>
struct RawValues<InsertionMethod> {
  static constexpr std::array<std::string_view, 3> all{"typing", "accessibility", "paste"};
};
template <>
struct RawValues<GhostStyle> {
  static constexpr std::array<std::string_view, 2> all{"grey", "tinted"};
};

template <typename Enum>
constexpr std::string_view rawValue(Enum value) {
  return RawValues<Enum>::all[static_cast<std::size_t>(value)];
}

template <typename Enum>
constexpr std::optional<Enum> fromRawValue(std::string_view raw) {
  for (std::size_t i = 0; i < RawValues<Enum>::all.size(); ++i)
    if (RawValues<Enum>::all[i] == raw) return static_cast<Enum>(i);
  return std::nullopt;
}

// The most words a suggestion of this length has.
constexpr int wordBudget(CompletionLength length) {
  constexpr std::array budgets{4, 10, 22};
  return budgets[static_cast<std::size_t>(length)];
}

// An engine's name as the user knows it.
constexpr std::string_view displayName(EngineKind kind) {
  constexpr std::string_view names[] = {"Nimbletype model", "Apple Intelligence", "Ollama", "Local server"};
  return names[static_cast<std::size_t>(kind)];
}

// Whether the engine talks to a server and so needs an address and a model name.
constexpr bool usesServer(EngineKind kind) {
  return kind == EngineKind::ollama || kind == EngineKind::openAI;
}

}  // namespace nimbletype
