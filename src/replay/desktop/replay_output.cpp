#include "replay/desktop/replay_output.h"

namespace nimbletype {

void ReplayOutput::print(std::string_view kind, const Json& fields) {
  if (closed_) return;
  Json line{{"ms", loop_.elapsed().count()}, {"t", kind}};
  for (const auto& [key, value] : fields.items()) line[key] = value;
  stream_ << line.dump(-1, ' ', false, Json::error_handler_t::replace) << '\n';
}

}  // namespace nimbletype
