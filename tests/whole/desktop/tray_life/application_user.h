#pragma once
#include <gmock/gmock.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <iostream>
#include <iterator>
#include <map>

#include "tests/whole/desktop/field_user.h"
#include "tools/stage/desktop_session.h"

namespace nimbletype {

// The real application beside a real editor, and who looks at its windows and its end.
class ApplicationOnTheDesktop : public testing::Test {
 protected:
  using Window = std::optional<xcb_window_t>;
  static constexpr std::uint16_t letterW = 13;

  void SetUp() override {
    ASSERT_TRUE(DesktopSession::start());
    scene_ = std::make_unique<Scene>(Scene::Cast{programs() / "nimbletype", STARTER_MODEL, "mousepad", "", "",
                                                 R"({"onDemandOnly":false})"});
  }
  static std::filesystem::path programs() {
    return std::filesystem::read_symlink("/proc/self/exe").parent_path();
  }

  void start() {
    scene_->startApplication();
    document_ += scene_->typeUntilGhost([](const std::string&) {});
  }
  void awaitGhost() {
    waitFor("a ghost", [this] { return scene_->offered().has_value(); });
  }
  // Typing asks anew where nothing was to be had.
  void typeUntilGhostIsBack() {
    scene_->typeKey('\n', std::chrono::milliseconds(70));
    document_ += '\n' + scene_->typeUntilGhost([](const std::string&) {});
  }
  void awaitStatus(const std::string& sentence) {
    waitFor("the status \"" + sentence + '"', [&] {
      scene_->trace().readOn();
      return scene_->trace().lastStatus() == sentence;
    });
  }
  void awaitLog(const std::string& words) {
    waitFor("the log to hold \"" + words + '"',
            [&] { return scene_->applicationLog().find(words) != std::string::npos; });
  }

  template <typename Condition>
  Window find(const ChildProcess& process, const Condition& condition) const {
    const auto all = scene_->windows().windowsOf(static_cast<std::uint32_t>(process.processID()));
    const auto found = std::ranges::find_if(all, condition);
    return found == all.end() ? Window() : *found;
  }
  Window titled(const std::string& title) const { return titled(title, scene_->application()); }
  Window titled(const std::string& title, const ChildProcess& process) const {
    return find(process, [&](xcb_window_t window) {
      return scene_->windows().titleOf(window).starts_with(title) && !scene_->windows().isUnmanaged(window);
    });
  }

  // Asks the process to end, as the end of a session does: what it returned.
  static std::optional<int> end(ChildProcess& process) {
    const auto start = Clock::now();
    process.signal(SIGTERM);
    waitFor("the application to end", [&] { return !process.isRunning(); });
    std::cout << "ended after " << millisecondsBetween(start, Clock::now()) << " ms\n";
    return process.exitStatus();
  }
  void expectThatTabArrives() {
    scene_->user().press(key::tab);
    document_ += '\t';
    FieldUser(*scene_).awaitText(document_);
  }

  std::unique_ptr<Scene> scene_;
  std::string document_;
};

}  // namespace nimbletype
