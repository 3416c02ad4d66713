#include "options.h"

#include <algorithm>
#include <cstdio>

namespace nimbletype::cli {

Options::Options(const char* command, const char* help) : command_(command), help_(help) {
  flag("--help", wantsHelp_);
}

void Options::flag(const char* name, bool& on) {
  options_.push_back({name, "", [&on](const std::string&) {
                        on = true;
                        return std::string();
                      }});
}

void Options::value(const char* name, Take take, const char* needed) {
  options_.push_back({name, needed, std::move(take)});
}

void Options::value(const char* name, std::optional<std::string>& value, const char* needed) {
  Options::value(
      name,
      [&value](const std::string& given) {
        value = given;
        return std::string();
      },
      needed);
}

void Options::text(std::optional<std::string>& text, const char* onlyOne) {
  text_ = &text;
  onlyOne_ = onlyOne;
}

std::optional<int> Options::read(Arguments arguments) const {
  for (std::size_t at = 0; at < arguments.size(); ++at)
    if (const std::string wrong = readOne(arguments, at); !wrong.empty()) return complain(wrong);
  if (!wantsHelp_) return std::nullopt;
  std::fputs(help_, stdout);
  return 0;
}

std::string Options::readOne(Arguments arguments, std::size_t& at) const {
  const std::string& name = arguments[at];
  if (const auto option = std::ranges::find(options_, name, &Option::name); option != options_.end()) {
    if (option->needed.empty()) return option->take({});
    if (at + 1 == arguments.size()) return name + " needs " + option->needed;
    return option->take(arguments[++at]);
  }
  if (text_ && name == "--") return {};
  if (!text_ || name.starts_with("--")) return "there is no option " + name;
  if (*text_) return onlyOne_;
  *text_ = name;
  return {};
}

int Options::complain(const std::string& sentence, int status) const {
  std::fprintf(stderr, "nimbletype-cli %s: %s\n", command_, sentence.c_str());
  return status;
}

}  // namespace nimbletype::cli
