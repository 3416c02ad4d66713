#include <cstdio>
#include <fstream>
#include <iostream>

#include "cli.h"
#include "replay/replay.h"

namespace nimbletype::cli {
namespace {

constexpr const char* help = R"(usage: nimbletype-cli replay FILE     (- for standard input)

Runs the real core over a virtual clock and a scripted desktop and prints what a user or the desktop would notice.
The input is one JSON object a line, each with a "t"; empty lines and lines that begin with # are skipped. The same
input gives the same output, and nothing of this machine is read: no clock, no settings, no other file.

What happens:
  set key value                a setting under its stored key
  reset                        all settings and rules back to their defaults
  world ...                    onBattery, secureInput, now, locale, timeZone, frontApp, writerName, misspelled,
                               engineStatus
  rule key ... | remove        mode, tabAccepts, insertion, length, recordWriting
  pause key seconds            "app:...", "web:..." or "*"
  resume key
  context ...                  windowTitle, domain, clipboard, screenText, nearbyText, recentText
  field ... | none             the focused field as it is now; "change": "app", "focus" or "value"
  type text, backspace count   the user writes
  key keyCode modifiers        a key press goes through the tap
  pointer                      a click or a scroll
  reply text|error|candidates  the engine's answer to a request: afterMs (50), times (1, 0: for ever)
  advance ms                   time passes
  suggestNow, toggleApp, toggleGlobal
  show what                    "status", "stats", "rules" or "settings"

What is printed: status, request, cancel, ghost, insert, delete, field, key, log and state, each with "ms" and "t".

Alternatives, emoji and writing memory are not part of this version; their lines end the run.

Exit status: 0, or 2 after a line that is not valid, with one sentence that names it.
)";

}  // namespace

int replay(Arguments arguments) {
  if (arguments.size() == 1 && arguments[0] == "--help") return std::fputs(help, stdout), 0;
  if (arguments.size() != 1) return std::fputs("usage: nimbletype-cli replay FILE\n", stderr), 2;
  std::ios::sync_with_stdio(false);
  if (arguments[0] == "-") return runReplay(std::cin, std::cout, std::cerr);
  std::ifstream file(arguments[0], std::ios::binary);
  // A folder opens, but cannot be read.
  if (file.peek(); file.bad() || !file.is_open()) {
    std::cerr << "nimbletype-cli: " << arguments[0] << " cannot be read\n";
    return 2;
  }
  return runReplay(file, std::cout, std::cerr);
}

}  // namespace nimbletype::cli
