#pragma once
#import <Foundation/Foundation.h>

#include "platform/file_store.h"

namespace nimbletype {

class MacFileStore final : public FileStore {
 public:
  explicit MacFileStore(NSURL* file) : file_(file) {}
  std::optional<std::string> read() const override;
  bool write(const std::string& content) override;
  void setAside() override;

 private:
  NSURL* file_;
};

// The application's folder under the user's application-support folder, made where it is missing.
NSURL* dataFolder();

}  // namespace nimbletype
