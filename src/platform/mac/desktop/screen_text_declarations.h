#pragma once
// The few parts of ScreenCaptureKit and Vision that are used, for SDKs without them. Their classes are looked
// up when the program runs, so neither framework has to be there when it is linked.
#import <CoreGraphics/CoreGraphics.h>
#import <Foundation/Foundation.h>

#if __has_include(<ScreenCaptureKit/ScreenCaptureKit.h>)
#import <ScreenCaptureKit/ScreenCaptureKit.h>
#else
@interface SCWindow : NSObject
@property(readonly) CGWindowID windowID;
@property(readonly) CGRect frame;
@end

@interface SCShareableContent : NSObject
+ (void)getShareableContentExcludingDesktopWindows:(BOOL)excludes
                               onScreenWindowsOnly:(BOOL)onScreen
                                 completionHandler:(void (^)(SCShareableContent*, NSError*))handler;
@property(readonly) NSArray<SCWindow*>* windows;
@end

@interface SCContentFilter : NSObject
- (instancetype)initWithDesktopIndependentWindow:(SCWindow*)window;
@end

@interface SCStreamConfiguration : NSObject
@property size_t width;
@property size_t height;
@property BOOL showsCursor;
@end

@interface SCScreenshotManager : NSObject
+ (void)captureImageWithFilter:(SCContentFilter*)filter
                 configuration:(SCStreamConfiguration*)configuration
             completionHandler:(void (^)(CGImageRef, NSError*))handler;
@end
#endif

#if __has_include(<Vision/Vision.h>)
#import <Vision/Vision.h>
#else
@interface VNRecognizedText : NSObject
@property(readonly, copy) NSString* string;
@property(readonly) float confidence;
@end

@interface VNRecognizedTextObservation : NSObject
@property(readonly) CGRect boundingBox;
- (NSArray<VNRecognizedText*>*)topCandidates:(NSUInteger)most;
@end

@interface VNRequest : NSObject
- (void)cancel;
@end

@interface VNRecognizeTextRequest : VNRequest
@property BOOL automaticallyDetectsLanguage;
@property(readonly, copy) NSArray<VNRecognizedTextObservation*>* results;
@end

@interface VNImageRequestHandler : NSObject
- (instancetype)initWithCGImage:(CGImageRef)image options:(NSDictionary*)options;
- (BOOL)performRequests:(NSArray<VNRequest*>*)requests error:(NSError**)error;
@end
#endif
