#include "replay/desktop/printing_ghost.h"

namespace nimbletype {

void PrintingGhost::present(const GhostContent& content) {
  Json fields{{"kind", content.kind == GhostContent::Kind::completion ? "completion" : "correction"},
              {"text", content.text},
              {"hint", content.hint},
              {"tinted", content.tinted}};
  if (shown_ == fields) return;
  output_.print("ghost", fields);
  shown_ = std::move(fields);
}

void PrintingGhost::hide() {
  if (!shown_) return;
  shown_.reset();
  output_.print("ghost", {{"kind", "none"}});
}

}  // namespace nimbletype
