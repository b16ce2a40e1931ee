// AVFoundation, as far as it is called here.
#pragma once
#include <Foundation/Foundation.h>

#pragma clang assume_nonnull begin
CK_MACOS(10.7)
@interface AVAudioPlayer : NSObject
- (nullable instancetype)initWithContentsOfURL:(NSURL*)url
                                         error:(NSError* __autoreleasing _Nullable* _Nullable)error;
- (BOOL)prepareToPlay;
- (BOOL)play;
@property(readonly, getter=isPlaying) BOOL playing;
@property NSTimeInterval currentTime;
@end
#pragma clang assume_nonnull end
