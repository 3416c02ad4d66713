#include "platform/mac/network/mac_http_client.h"

#include <map>
#include <memory>
#include <utility>

#include "platform/mac/bridge/mac_text.h"
#include "platform/mac/network/mac_url_loading.h"
#include "platform/mac/system/mac_main_loop.h"

namespace nimbletype {
namespace {

using Result = std::expected<HttpReply, HttpFailure>;
using enum HttpFailure::Case;

struct Exchange {
  NSURLSessionTask* task = nil;
  HttpClient::Handler done;
  std::string body;
  Task deadline;
};

HttpFailure::Case reasonFor(NSInteger code) {
  switch (code) {
    case NSURLErrorTimedOut:
      return timedOut;
    case NSURLErrorBadURL:
    case NSURLErrorUnsupportedURL:
      return badAddress;
    case NSURLErrorCannotFindHost:
    case NSURLErrorCannotConnectToHost:
    case NSURLErrorDNSLookupFailed:
    case NSURLErrorNotConnectedToInternet:
    case NSURLErrorInternationalRoamingOff:
    case NSURLErrorDataNotAllowed:
    case NSURLErrorAppTransportSecurityRequiresSecureConnection:
      return notConnected;
    default:
      return code <= NSURLErrorSecureConnectionFailed && code >= NSURLErrorClientCertificateRequired
                 ? notTrusted
                 : dropped;
  }
}

Result resultOf(NSURLResponse* response, std::string body, NSError* error) {
  if (error)
    return std::unexpected(HttpFailure{reasonFor(error.code), utf8String(error.localizedDescription)});
  NSHTTPURLResponse* reply = static_cast<NSHTTPURLResponse*>(response);
  return HttpReply{static_cast<int>(reply.statusCode), headersOf(reply), std::move(body)};
}

NSURLSession* makeSession(id<NSURLSessionDelegate> delegate, bool pastProxies) {
  NSURLSessionConfiguration* configuration = NSURLSessionConfiguration.ephemeralSessionConfiguration;
  setUpConfiguration(configuration);
  if (pastProxies) configuration.connectionProxyDictionary = @{};
  return [NSURLSession sessionWithConfiguration:configuration
                                       delegate:delegate
                                  delegateQueue:NSOperationQueue.mainQueue];
}

NSURLRequest* urlRequestFor(NSURL* url, const HttpRequest& request) {
  NSMutableURLRequest* wire = urlRequest(url, request.headers);
  wire.HTTPMethod = nsString(request.method);
  wire.cachePolicy = NSURLRequestReloadIgnoringLocalCacheData;
  wire.timeoutInterval = std::chrono::duration<double>(request.timeout).count();  // of silence
  if (!request.body.empty())
    wire.HTTPBody = [NSData dataWithBytes:request.body.data() length:request.body.size()];
  return wire;
}

}  // namespace
}  // namespace nimbletype

// Hears of every exchange, on the main thread.
@interface NimbletypeHttpDelegate : NSObject <NSURLSessionDataDelegate> {
 @public
  std::map<void*, std::unique_ptr<nimbletype::Exchange>> _exchanges;  // by their tasks
}
@end

@implementation NimbletypeHttpDelegate

- (void)watch:(NSURLSessionTask*)task
        until:(nimbletype::Milliseconds)timeout
         done:(nimbletype::HttpClient::Handler)done {
  using namespace nimbletype;
  auto exchange = std::make_unique<Exchange>(task, std::move(done));
  __weak NimbletypeHttpDelegate* weakSelf = self;
  exchange->deadline = MacMainLoop().after(timeout, [weakSelf, task] {
    [weakSelf settle:task with:std::unexpected(HttpFailure{timedOut, "no answer in time"})];
  });
  _exchanges[(__bridge void*)task] = std::move(exchange);
}

- (void)forget:(NSURLSessionTask*)task {
  if (_exchanges.erase((__bridge void*)task) > 0) [task cancel];
}

// Whoever hears of it may destroy everything here.
- (void)settle:(NSURLSessionTask*)task with:(nimbletype::Result)result {
  const auto exchange = _exchanges.extract((__bridge void*)task);
  if (!exchange) return;
  [task cancel];
  exchange.mapped()->done(std::move(result));
}

- (void)URLSession:(NSURLSession*)session
                          task:(NSURLSessionTask*)task
    willPerformHTTPRedirection:(NSHTTPURLResponse*)response
                    newRequest:(NSURLRequest*)request
             completionHandler:(void (^)(NSURLRequest*))completionHandler {
  completionHandler(nil);
}

- (void)URLSession:(NSURLSession*)session
                   task:(NSURLSessionTask*)task
    didReceiveChallenge:(NSURLAuthenticationChallenge*)challenge
      completionHandler:(nimbletype::ChallengeAnswer)completionHandler {
  nimbletype::answerChallenge(challenge, completionHandler);
}

- (void)URLSession:(NSURLSession*)session dataTask:(NSURLSessionDataTask*)task didReceiveData:(NSData*)data {
  using namespace nimbletype;
  const auto found = _exchanges.find((__bridge void*)task);
  if (found == _exchanges.end()) return;
  std::string& body = found->second->body;
  if (body.size() + data.length > HttpClient::longestBody)
    return [self settle:task with:std::unexpected(HttpFailure{tooLarge, "the reply has no end"})];
  body.append(static_cast<const char*>(data.bytes), data.length);
}

- (void)URLSession:(NSURLSession*)session task:(NSURLSessionTask*)task didCompleteWithError:(NSError*)error {
  const auto found = _exchanges.find((__bridge void*)task);
  if (found == _exchanges.end()) return;
  [self settle:task with:nimbletype::resultOf(task.response, std::move(found->second->body), error)];
}

@end

namespace nimbletype {

MacHttpClient::MacHttpClient()
    : delegate_([[NimbletypeHttpDelegate alloc] init]),
      elsewhere_(makeSession(delegate_, false)),
      thisMachine_(makeSession(delegate_, true)) {}

MacHttpClient::~MacHttpClient() {
  delegate_->_exchanges.clear();
  [elsewhere_ invalidateAndCancel];
  [thisMachine_ invalidateAndCancel];
}

Task MacHttpClient::send(const HttpRequest& request, Handler done) {
  NSURL* url = webAddress(request.url);
  if (!url)
    return MacMainLoop().after(Milliseconds(0), [done = std::move(done), address = request.url] {
      done(std::unexpected(HttpFailure{badAddress, address}));
    });
  NSURLSession* session = isThisMachine(url) ? thisMachine_ : elsewhere_;
  NSURLSessionTask* task = [session dataTaskWithRequest:urlRequestFor(url, request)];
  [delegate_ watch:task until:request.timeout done:std::move(done)];
  [task resume];
  __weak NimbletypeHttpDelegate* delegate = delegate_;
  return Task([delegate, task] { [delegate forget:task]; });
}

}  // namespace nimbletype
