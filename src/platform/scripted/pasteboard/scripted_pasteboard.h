#pragma once
#include <map>
#include <string>
#include <vector>

#include "platform/pasteboard/pasteboard.h"
#include "platform/system/main_loop.h"

namespace nimbletype {

// A pasteboard in memory, to which a test copies as another application would.
class ScriptedPasteboard final : public Pasteboard {
 public:
  using Item = std::map<std::string, std::string>;  // data by format
  using Items = std::vector<Item>;
  static constexpr const char* textFormat = "text";
  static constexpr const char* passingMark = "passing";

  explicit ScriptedPasteboard(MainLoop& loop) : loop_(loop) {}

  // Another application copies, or reads what there is.
  void copy(Items items);
  const Items& read();

  [[nodiscard]] Task save(SaveHandler done) override;
  bool lend(std::string_view text) override;
  Reading reading() const override;
  bool isOurs() override { return ours_; }
  void restore(const SavedPasteboard& saved) override;

  Milliseconds ownerTakes{0};  // to hand its data out; beyond the longest save none of it is had
  bool tellsReading = true;
  bool available = true;  // else text that is lent empties the pasteboard
  std::vector<std::string> lent;

 private:
  MainLoop& loop_;
  Items items_;
  bool ours_ = false, wasRead_ = false;
};

}  // namespace nimbletype
