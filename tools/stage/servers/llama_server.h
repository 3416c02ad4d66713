#pragma once
#include <sys/types.h>

#include <string>
#include <vector>

#include "tools/stage/temporary_folder.h"

namespace nimbletype {

// llama.cpp's own server with one slot and one thread, on a free port of 127.0.0.1, as long as this lives or
// the process does.
class LlamaServer {
 public:
  // Returns when it takes requests; throws with the end of its log when it does not come up.
  LlamaServer(const std::string& program, const std::string& model,
              const std::vector<std::string>& arguments = {});
  ~LlamaServer();
  LlamaServer(const LlamaServer&) = delete;
  LlamaServer& operator=(const LlamaServer&) = delete;

  // "http://127.0.0.1:PORT" and the path.
  std::string url(const std::string& path = "") const { return address_ + path; }
  // All it has written so far.
  std::string log() const;

 private:
  void start(const std::string& program, std::vector<std::string> arguments);
  void stop();

  TemporaryFolder folder_;
  pid_t process_ = -1;
  std::string address_;
};

}  // namespace nimbletype
