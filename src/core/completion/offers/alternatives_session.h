#pragma once
#include <functional>

#include "core/completion/asking/generation.h"
#include "input/field/field_snapshot.h"
#include "overlay/lists/alternatives_panel.h"

namespace nimbletype {

// The list of other suggestions while it is open: asks the engine for them and shows what comes.
class AlternativesSession {
 public:
  // A few are asked for beyond those the list needs, because some say the same.
  static constexpr int asked = 5;
  static constexpr std::size_t enough = 3;

  struct Order {
    CompletionProvider& provider;
    CompletionRequest request;
    FieldSnapshot snapshot;
    BottomLeftRect caretRect;                                    // screen points, origin at the bottom left
    std::function<std::string(const std::string& reply)> clean;  // empty for what is not to be shown
  };
  enum class News { first, more, none };

  AlternativesSession(MainLoop& loop, AlternativesPanel& panel) : loop_(loop), panel_(panel) {}

  // Opens the list with nothing in it yet. `told` is called when rows have come, and when there are none to
  // come, with the sentence that says why.
  using Told = std::function<void(News, const std::string& reason)>;
  void open(Order order, Told told);
  void close();
  bool isOpen() const { return panel_.isVisible(); }

  // Whether the list still stands where this field's caret is.
  bool fits(const FieldSnapshot& snapshot) const;
  void moveSelection(int by) { panel_.moveSelection(by); }
  // What Tab does now; with nothing in it while there are no rows.
  AlternativeChoice choice() const { return panel_.choice(); }

 private:
  void ask(double temperature);
  void take(std::expected<std::vector<std::string>, ProviderError> replies);
  void add(const std::vector<std::string>& replies);
  void finish(const std::string& reason);

  MainLoop& loop_;
  AlternativesPanel& panel_;
  std::optional<Order> order_;
  Told told_;
  bool askedAgain_ = false;
  Task request_, again_, timer_;
};

}  // namespace nimbletype
