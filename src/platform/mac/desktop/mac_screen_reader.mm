#include "platform/mac/desktop/mac_screen_reader.h"

#import <dispatch/dispatch.h>

#include <atomic>
#include <memory>
#include <utility>

#include "platform/mac/bridge/cf_ref.h"
#include "platform/mac/bridge/mac_framework.h"
#include "platform/mac/bridge/mac_text.h"
#import "platform/mac/desktop/screen_text_declarations.h"

namespace nimbletype {
namespace {

constexpr float leastConfidence = 0.4f;
constexpr double pixelsPerPoint = 2;

// One reading of one window. The handler belongs to the main thread; the rest is set once.
struct Reading {
  CGWindowID window = 0;
  TopLeftRect frame;
  ScreenReader::Handler done;
  std::atomic<bool> isOver = false;
};
using ReadingRef = std::shared_ptr<Reading>;

void finish(const ReadingRef& reading, std::vector<PlacedText> lines) {
  const auto found = std::make_shared<std::vector<PlacedText>>(std::move(lines));
  dispatch_async(dispatch_get_main_queue(), ^{
    if (reading->isOver.exchange(true)) return;
    const auto done = std::exchange(reading->done, nullptr);
    if (done) done(std::move(*found));
  });
}

// Vision measures in shares of the picture, from its bottom left corner.
TopLeftRect onScreen(CGRect box, const TopLeftRect& frame) {
  return {frame.x + box.origin.x * frame.width, frame.y + (1 - box.origin.y - box.size.height) * frame.height,
          box.size.width * frame.width, box.size.height * frame.height};
}

std::vector<PlacedText> linesIn(CGImageRef image, const TopLeftRect& frame) {
  VNRecognizeTextRequest* request = [[NSClassFromString(@"VNRecognizeTextRequest") alloc] init];
  request.automaticallyDetectsLanguage = YES;
  VNImageRequestHandler* handler = [[NSClassFromString(@"VNImageRequestHandler") alloc] initWithCGImage:image
                                                                                                options:@{}];
  std::vector<PlacedText> lines;
  if (!request || ![handler performRequests:@[ request ] error:nil]) return lines;
  for (VNRecognizedTextObservation* observation in request.results) {
    VNRecognizedText* best = [observation topCandidates:1].firstObject;
    if (best && best.confidence >= leastConfidence)
      lines.push_back({utf8String(best.string), onScreen(observation.boundingBox, frame)});
  }
  return lines;
}

void recognise(const ReadingRef& reading, CGImageRef image) {
  if (!image || reading->isOver) return finish(reading, {});
  const auto kept = CFRef<CGImageRef>::retain(image);
  dispatch_async(dispatch_get_global_queue(QOS_CLASS_UTILITY, 0), ^{
    @autoreleasepool {
      finish(reading, reading->isOver ? std::vector<PlacedText>() : linesIn(kept.get(), reading->frame));
    }
  });
}

void capture(const ReadingRef& reading, SCWindow* window) {
  SCContentFilter* filter =
      [[NSClassFromString(@"SCContentFilter") alloc] initWithDesktopIndependentWindow:window];
  SCStreamConfiguration* configuration = [[NSClassFromString(@"SCStreamConfiguration") alloc] init];
  configuration.width = static_cast<size_t>(reading->frame.width * pixelsPerPoint);
  configuration.height = static_cast<size_t>(reading->frame.height * pixelsPerPoint);
  configuration.showsCursor = NO;
  [NSClassFromString(@"SCScreenshotManager") captureImageWithFilter:filter
                                                      configuration:configuration
                                                  completionHandler:^(CGImageRef image, NSError*) {
                                                    recognise(reading, image);
                                                  }];
}

SCWindow* windowOf(const ReadingRef& reading, NSArray<SCWindow*>* windows) {
  for (SCWindow* window in windows)
    if (window.windowID == reading->window) return window;
  return nil;
}

}  // namespace

// Single pictures came with macOS 14.
MacScreenReader::MacScreenReader()
    : isAvailable_(loadFramework("ScreenCaptureKit") && loadFramework("Vision") &&
                   NSClassFromString(@"SCScreenshotManager")) {}

bool MacScreenReader::isPermitted() {
  return isAvailable_ && CGPreflightScreenCaptureAccess();
}

Task MacScreenReader::read(const ScreenWindow& window, Handler done) {
  const auto reading = std::make_shared<Reading>();
  reading->window = static_cast<CGWindowID>(window.id);
  reading->frame = window.frame;
  reading->done = std::move(done);
  [NSClassFromString(@"SCShareableContent")
      getShareableContentExcludingDesktopWindows:YES
                             onScreenWindowsOnly:YES
                               completionHandler:^(SCShareableContent* content, NSError*) {
                                 SCWindow* found = windowOf(reading, content.windows);
                                 if (!found || reading->isOver) return finish(reading, {});
                                 capture(reading, found);
                               }];
  const auto deadline = dispatch_time(DISPATCH_TIME_NOW, static_cast<int64_t>(longestRead * NSEC_PER_SEC));
  dispatch_after(deadline, dispatch_get_main_queue(), ^{
    finish(reading, {});
  });
  return Task([reading] {
    reading->isOver = true;
    reading->done = nullptr;
  });
}

}  // namespace nimbletype
