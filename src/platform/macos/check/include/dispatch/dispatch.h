#pragma once

#include "../check_base.h"

@class NSObject;
@protocol OS_dispatch_queue;
typedef NSObject<OS_dispatch_queue>* dispatch_queue_t;
typedef void (^dispatch_block_t)(void);
typedef void (*dispatch_function_t)(void*);

#pragma clang assume_nonnull begin
CK_EXTERN dispatch_queue_t dispatch_get_main_queue(void) CK_MACOS(10.6);
CK_EXTERN void dispatch_async(dispatch_queue_t queue, dispatch_block_t block) CK_MACOS(10.6);
CK_EXTERN void dispatch_async_f(dispatch_queue_t queue, void* _Nullable context,
                                dispatch_function_t work) CK_MACOS(10.6);
CK_EXTERN void dispatch_assert_queue(dispatch_queue_t queue) CK_MACOS(10.12);
#pragma clang assume_nonnull end
