#pragma once
#include <cstdio>
#include <string>

#include "engines/store/model_phase.h"
#include "engines/store/transfer_rate.h"

namespace nimbletype::cli {

// " 50 %  1.5 GB of 3 GB  19.8 MB/s  1:15 left", as far as it is known.
std::string progressLine(const ModelPhase& phase, const TransferRate& rate, MonotonicTime now);

// Tells a person how a download gets on: one line with a bar on a terminal, else a line now and then.
class DownloadProgress {
 public:
  DownloadProgress(std::FILE* stream, bool isTerminal) : stream_(stream), isTerminal_(isTerminal) {}
  // To be called several times a second, whether anything came or not.
  void show(const ModelPhase& phase, MonotonicTime now);
  // Leaves the line, so that others can write.
  void end();

 private:
  void showOnTerminal(const std::string& line);
  void showStep(const ModelPhase& phase, const std::string& line);

  std::FILE* stream_;
  bool isTerminal_;
  TransferRate rate_;
  ModelPhase::Case last_ = ModelPhase::Case::notDownloaded;
  int step_ = -1;  // tenths of the whole that were last told
  bool isLineOpen_ = false;
};

}  // namespace nimbletype::cli
