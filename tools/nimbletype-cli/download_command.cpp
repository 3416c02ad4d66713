#include <unistd.h>

#include <charconv>
#include <csignal>
#include <expected>
#include <optional>

#include "cli.h"
#include "desktop.h"
#include "download_progress.h"
#include "engines/store/model_store.h"
#include "options.h"
#include "text/format/byte_count.h"

namespace nimbletype::cli {
namespace {

constexpr const char* help = R"(usage: nimbletype-cli download [options]

Fetches the model of the built-in engine, checks it and puts it where the application looks for it. When it is
interrupted, what came is kept, and the same command goes on from there.

  --folder DIR      where to put it (default: the folder Models in the application's own)

Another file than the application's model takes all four of these:

  --from URL        where it is: https, or http on this machine
  --sha256 HEX      its SHA-256 digest
  --size BYTES      its exact size
  --name FILE       what to call it

Exit status: 0 when the model is there and checked; 1 when it is not; 2 for wrong arguments.
)";

struct Order {
  std::optional<std::string> folder, from, digest, size, name;
};

bool isDigest(const std::string& text) {
  return text.size() == 64 && text.find_first_not_of("0123456789abcdef") == std::string::npos;
}

std::optional<std::int64_t> parseSize(const std::string& text) {
  std::int64_t size = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), size);
  const bool isWhole = error == std::errc() && end == text.data() + text.size();
  return isWhole && size > 0 ? std::optional(size) : std::nullopt;
}

bool isPlainName(const std::string& name) {
  return !name.empty() && !name.starts_with('.') && name.find('/') == std::string::npos;
}

bool namesModel(const Order& order) {
  return order.from || order.digest || order.size || order.name;
}

// The file that the order describes, or what is wrong with it.
std::expected<ModelSpec, std::string> namedModel(const Order& order) {
  using Wrong = std::unexpected<std::string>;
  if (!order.from || !order.digest || !order.size || !order.name)
    return Wrong("--from, --sha256, --size and --name go together");
  const auto size = parseSize(*order.size);
  if (!isDownloadAddress(*order.from))
    return Wrong("\"" + *order.from + "\" is neither an https address nor one on this machine");
  if (!isDigest(*order.digest)) return Wrong("--sha256 takes 64 digits 0-9a-f");
  if (!size) return Wrong("--size takes a number of bytes");
  if (!isPlainName(*order.name)) return Wrong("--name takes a name without a folder or a dot in front");
  ModelSpec spec;
  spec.displayName = spec.fileName = *order.name;
  spec.address = *order.from;
  spec.digest = *order.digest;
  spec.size = *size;
  return spec;
}

volatile std::sig_atomic_t interrupted = 0;

// The second signal ends the program at once.
void interrupt(int signal) {
  interrupted = 1;
  std::signal(signal, SIG_DFL);
}

bool isUnderWay(const ModelPhase& phase) {
  return phase.state == ModelPhase::Case::downloading || phase.state == ModelPhase::Case::checking;
}

// Shows the phase several times a second, which also lets the loop notice a signal.
class Ticker {
 public:
  Ticker(MainLoop& loop, const ModelStore& store, DownloadProgress& progress)
      : loop_(loop), store_(store), progress_(progress), observation_(store.observe([this] { show(); })) {}

 private:
  void show() {
    if (!isUnderWay(store_.phase())) return;
    progress_.show(store_.phase(), loop_.now());
    next_ = loop_.after(Milliseconds(250), [this] { show(); });
  }

  MainLoop& loop_;
  const ModelStore& store_;
  DownloadProgress& progress_;
  Task next_, observation_;
};

void fetch(Desktop& desktop, ModelStore& store) {
  DownloadProgress progress(stdout, isatty(STDOUT_FILENO) != 0);
  const Ticker ticker(desktop.loop(), store, progress);
  std::signal(SIGINT, interrupt);
  std::signal(SIGTERM, interrupt);
  store.startDownload();
  desktop.runUntil([&] { return interrupted || !isUnderWay(store.phase()); });
  progress.end();
}

int report(ModelStore& store) {
  if (isUnderWay(store.phase())) {
    store.cancelDownload();
    std::fputs("Stopped. What came is kept: the same command goes on from there.\n", stderr);
    return 1;
  }
  if (store.phase().state != ModelPhase::Case::installed)
    return std::fprintf(stderr, "%s\n", store.phase().message.c_str()), 1;
  std::printf("Downloaded: %s\n", store.modelFile().c_str());
  return 0;
}

}  // namespace

int download(Arguments arguments) {
  Order order;
  Options options("download", help);
  options.value("--folder", order.folder);
  options.value("--from", order.from);
  options.value("--sha256", order.digest);
  options.value("--size", order.size);
  options.value("--name", order.name);
  if (const auto status = options.read(arguments)) return *status;
  std::optional<ModelSpec> named;
  if (namesModel(order)) {
    auto model = namedModel(order);
    if (!model) return options.complain(model.error());
    named = std::move(*model);
  }

  const auto desktop = makeDesktop();
  const auto spec = named ? *named : builtInModel(modelHub(desktop->defaults(), desktop->log()));
  const auto folder = order.folder ? std::filesystem::path(*order.folder) : desktop->dataFolder() / "Models";
  ModelStore store(
      {desktop->loop(), desktop->downloads(), desktop->background(), desktop->disk(), desktop->log()}, spec,
      folder);
  if (store.phase().state != ModelPhase::Case::installed) {
    std::printf("%s, %s\n", spec.displayName.c_str(), text::formatByteCount(spec.size).c_str());
    fetch(*desktop, store);
  }
  return report(store);
}

}  // namespace nimbletype::cli
