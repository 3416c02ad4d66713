#pragma once
#import <Foundation/Foundation.h>

#include "platform/network/http_client.h"

@class NimbletypeHttpDelegate;

namespace nimbletype {

// The port over URL sessions, one of them past every proxy for servers on this machine. See mac_url_loading.h
// for trust.
class MacHttpClient final : public HttpClient {
 public:
  MacHttpClient();
  ~MacHttpClient() override;
  MacHttpClient(const MacHttpClient&) = delete;
  MacHttpClient& operator=(const MacHttpClient&) = delete;

  [[nodiscard]] Task send(const HttpRequest& request, Handler done) override;

 private:
  NimbletypeHttpDelegate* delegate_;
  NSURLSession* elsewhere_;
  NSURLSession* thisMachine_;
};

}  // namespace nimbletype
