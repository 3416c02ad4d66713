#pragma once
#include <map>
#include <optional>
#include <string>

#include "core/settings/settings_types.h"
#include "platform/system/main_loop.h"

namespace nimbletype {

// Whether suggestions appear in an app or on a site: as the general settings say, always or never.
enum class RuleMode { inherit, on, off };
template <>
struct RawValues<RuleMode> {
  static constexpr std::array<std::string_view, 3> all{"inherit", "on", "off"};
};

// What the user chose for one app or site; what is absent follows the general settings.
struct AppRule {
  RuleMode mode = RuleMode::inherit;
  std::optional<bool> tabAccepts{};
  std::optional<InsertionMethod> insertion{};
  std::optional<CompletionLength> length{};
  std::optional<bool> recordWriting{};
  bool operator==(const AppRule&) const = default;
};

// The end of a pause that lasts until the user resumes. An ordinary moment, so that it is stored like any
// other.
inline constexpr WallTime untilResumed = std::chrono::sys_days{std::chrono::December / 31 / 9999} +
                                         std::chrono::hours(24) - std::chrono::seconds(1);

// Everything the rules file holds. Keys are "app:" and a bundle identifier, or "web:" and a domain.
struct RulesState {
  std::map<std::string, AppRule> rules{};
  std::map<std::string, WallTime> pauses{};  // until when
  std::optional<WallTime> globalPauseUntil{};
  std::map<std::string, std::string> names{};  // for people
  bool operator==(const RulesState&) const = default;
};

inline std::string appRuleKey(std::string_view bundleID) {
  return "app:" + std::string(bundleID);
}
inline std::string webRuleKey(std::string_view domain) {
  return "web:" + std::string(domain);
}
inline bool isRuleKey(std::string_view key) {
  return key.size() > 4 && (key.starts_with("app:") || key.starts_with("web:"));
}

}  // namespace nimbletype
