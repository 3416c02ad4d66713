#include "platform/mac/network/mac_http_downloads.h"

#include <map>
#include <memory>
#include <utility>

#include "platform/mac/bridge/mac_text.h"
#include "platform/mac/network/mac_url_loading.h"
#include "platform/network/download_sink.h"

namespace nimbletype {
namespace {

using enum DownloadEnd::Case;

constexpr NSTimeInterval longestTransfer = 21'600;  // seconds
constexpr int mostRedirects = 10;
constexpr std::int64_t patienceWithDisk = 2 * static_cast<std::int64_t>(NSEC_PER_SEC);

struct Transfer {
  NSURLSessionTask* task = nil;
  std::shared_ptr<DownloadSink> sink;
  int redirects = 0;
};

NSURLSessionConfiguration* makeConfiguration(Milliseconds longestSilence) {
  NSURLSessionConfiguration* configuration = NSURLSessionConfiguration.defaultSessionConfiguration;
  setUpConfiguration(configuration);
  configuration.waitsForConnectivity = YES;
  configuration.timeoutIntervalForResource = longestTransfer;
  configuration.timeoutIntervalForRequest = std::chrono::duration<double>(longestSilence).count();
  return configuration;
}

bool isSilence(NSError* error) {
  return error.code == NSURLErrorTimedOut || error.code == NSURLErrorNetworkConnectionLost ||
         error.code == NSURLErrorBadServerResponse;
}

DownloadEnd endOf(const DownloadSink& sink, NSError* error) {
  if (error)
    return {sink.hasBegun() || isSilence(error) ? dropped : notConnected,
            utf8String(error.localizedDescription)};
  return sink.hasBegun() ? sink.whole() : DownloadEnd{notConnected, "no reply came"};
}

}  // namespace
}  // namespace nimbletype

// Hears of every transfer, on a queue of its own. The map belongs to that queue.
@interface NimbletypeDownloadDelegate : NSObject <NSURLSessionDataDelegate> {
 @public
  NSOperationQueue* _queue;

 @private
  std::map<void*, nimbletype::Transfer> _transfers;  // by their tasks
}
@end

@implementation NimbletypeDownloadDelegate

- (instancetype)init {
  if (!(self = [super init])) return nil;
  _queue = [[NSOperationQueue alloc] init];
  _queue.maxConcurrentOperationCount = 1;
  _queue.qualityOfService = NSQualityOfServiceUtility;
  return self;
}

- (void)start:(NSURLSessionTask*)task into:(std::shared_ptr<nimbletype::DownloadSink>)sink {
  [_queue addOperationWithBlock:^{
    self->_transfers[(__bridge void*)task] = {task, sink};
    if (const auto trouble = sink->open()) return [self end:task with:*trouble];
    [task resume];
  }];
}

// What has arrived was queued before and is in the file when this returns.
- (void)stop:(NSURLSessionTask*)task {
  [self doAndWait:^{
    [task cancel];
    if (const auto transfer = self->_transfers.extract((__bridge void*)task)) transfer.mapped().sink->close();
  }];
}

- (void)stopAll {
  [self doAndWait:^{
    for (const auto& [key, transfer] : self->_transfers) transfer.sink->close();
    self->_transfers.clear();
  }];
}

- (void)doAndWait:(void (^)())job {
  dispatch_semaphore_t done = dispatch_semaphore_create(0);
  [_queue addOperationWithBlock:^{
    job();
    dispatch_semaphore_signal(done);
  }];
  dispatch_semaphore_wait(done, dispatch_time(DISPATCH_TIME_NOW, nimbletype::patienceWithDisk));
}

- (void)end:(NSURLSessionTask*)task with:(const nimbletype::DownloadEnd&)end {
  const auto transfer = _transfers.extract((__bridge void*)task);
  if (!transfer) return;
  [task cancel];
  transfer.mapped().sink->end(end);
}

- (void)URLSession:(NSURLSession*)session
                          task:(NSURLSessionTask*)task
    willPerformHTTPRedirection:(NSHTTPURLResponse*)response
                    newRequest:(NSURLRequest*)request
             completionHandler:(void (^)(NSURLRequest*))completionHandler {
  using namespace nimbletype;
  const auto found = _transfers.find((__bridge void*)task);
  const bool secure = [request.URL.scheme.lowercaseString isEqualToString:@"https"];
  const bool circles = found != _transfers.end() && ++found->second.redirects > mostRedirects;
  if (found != _transfers.end() && secure && !circles)
    return completionHandler(urlRequest(request.URL, found->second.sink->request().headers));
  [self end:task
       with:{redirectRefused, secure ? "too many redirects" : utf8String(request.URL.absoluteString)}];
  completionHandler(nil);
}

- (void)URLSession:(NSURLSession*)session
                   task:(NSURLSessionTask*)task
    didReceiveChallenge:(NSURLAuthenticationChallenge*)challenge
      completionHandler:(nimbletype::ChallengeAnswer)completionHandler {
  nimbletype::answerChallenge(challenge, completionHandler);
}

- (void)URLSession:(NSURLSession*)session
              dataTask:(NSURLSessionDataTask*)task
    didReceiveResponse:(NSURLResponse*)response
     completionHandler:(void (^)(NSURLSessionResponseDisposition))completionHandler {
  using namespace nimbletype;
  const auto found = _transfers.find((__bridge void*)task);
  if (found == _transfers.end()) return completionHandler(NSURLSessionResponseCancel);
  NSHTTPURLResponse* reply = static_cast<NSHTTPURLResponse*>(response);
  const auto trouble = found->second.sink->begin({static_cast<int>(reply.statusCode), headersOf(reply)});
  if (trouble) [self end:task with:*trouble];
  completionHandler(trouble ? NSURLSessionResponseCancel : NSURLSessionResponseAllow);
}

- (void)URLSession:(NSURLSession*)session dataTask:(NSURLSessionDataTask*)task didReceiveData:(NSData*)data {
  const auto found = _transfers.find((__bridge void*)task);
  if (found == _transfers.end()) return;
  const auto trouble = found->second.sink->take({static_cast<const char*>(data.bytes), data.length});
  if (trouble) [self end:task with:*trouble];
}

- (void)URLSession:(NSURLSession*)session task:(NSURLSessionTask*)task didCompleteWithError:(NSError*)error {
  const auto found = _transfers.find((__bridge void*)task);
  if (found != _transfers.end()) [self end:task with:nimbletype::endOf(*found->second.sink, error)];
}

@end

namespace nimbletype {

MacHttpDownloads::MacHttpDownloads(MainLoop& loop, Milliseconds longestSilence)
    : loop_(loop),
      delegate_([[NimbletypeDownloadDelegate alloc] init]),
      session_([NSURLSession sessionWithConfiguration:makeConfiguration(longestSilence)
                                             delegate:delegate_
                                        delegateQueue:delegate_->_queue]) {}

MacHttpDownloads::~MacHttpDownloads() {
  [delegate_ stopAll];
  [session_ invalidateAndCancel];
}

Task MacHttpDownloads::start(const DownloadRequest& request, Handlers handlers) {
  NSURL* url = webAddress(request.url);
  auto wanted = std::make_shared<Handlers>(std::move(handlers));
  const auto sink = std::make_shared<DownloadSink>(request, postedTo(loop_, wanted));
  if (!url) {
    sink->end({notConnected, "no web address"});
    return Task([wanted]() mutable { wanted.reset(); });
  }
  NSURLSessionTask* task = [session_ dataTaskWithRequest:urlRequest(url, request.headers)];
  [delegate_ start:task into:sink];
  __weak NimbletypeDownloadDelegate* delegate = delegate_;
  return Task([wanted, delegate, task]() mutable {
    wanted.reset();
    [delegate stop:task];
  });
}

}  // namespace nimbletype
