// ServiceManagement, as far as it is called here.
#pragma once
#include <Foundation/Foundation.h>

#pragma clang assume_nonnull begin
typedef CK_ENUM(NSInteger, SMAppServiceStatus){SMAppServiceStatusNotRegistered,
                                               SMAppServiceStatusEnabled,
                                               SMAppServiceStatusRequiresApproval,
                                               SMAppServiceStatusNotFound};
CK_MACOS(13.0)
@interface SMAppService : NSObject
@property(class, readonly, strong) SMAppService* mainAppService;
@property(readonly) SMAppServiceStatus status;
- (BOOL)registerAndReturnError:(NSError* __autoreleasing _Nullable* _Nullable)error;
- (BOOL)unregisterAndReturnError:(NSError* __autoreleasing _Nullable* _Nullable)error;
+ (void)openSystemSettingsLoginItems;
@end
#pragma clang assume_nonnull end
