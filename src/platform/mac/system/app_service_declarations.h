#pragma once
// The part of ServiceManagement that is used, for SDKs without it. Its class is looked up when the program
// runs, so the framework does not have to be there when it is linked.
#import <Foundation/Foundation.h>

#if __has_include(<ServiceManagement/SMAppService.h>)
#import <ServiceManagement/SMAppService.h>
#else
typedef NS_ENUM(NSInteger, SMAppServiceStatus) {
  SMAppServiceStatusNotRegistered,
  SMAppServiceStatusEnabled,
  SMAppServiceStatusRequiresApproval,
  SMAppServiceStatusNotFound
};

@interface SMAppService : NSObject
@property(class, readonly) SMAppService* mainAppService;
@property(readonly) SMAppServiceStatus status;
- (BOOL)registerAndReturnError:(NSError**)error;
- (BOOL)unregisterAndReturnError:(NSError**)error;
@end
#endif
