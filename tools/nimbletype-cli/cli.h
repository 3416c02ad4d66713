#pragma once
#include <span>
#include <string>

namespace nimbletype::cli {

// The commands. Each gets the arguments after its name and returns the exit status: 0 when it did what was
// asked, 1 when it could not, 2 when the arguments make no sense.
using Arguments = std::span<const std::string>;

int complete(Arguments arguments);
int doctor(Arguments arguments);
int download(Arguments arguments);
int emoji(Arguments arguments);
int models(Arguments arguments);
int replay(Arguments arguments);
int stats(Arguments arguments);

}  // namespace nimbletype::cli
