#import "platform/macos/text.h"

namespace ostrel {

NSString* toNSString(std::string_view utf8) {
    NSString* text = [[NSString alloc] initWithBytes:utf8.data()
                                              length:utf8.size()
                                            encoding:NSUTF8StringEncoding];
    return text ? text : @"";
}

std::string toUtf8(NSString* text) {
    const char* bytes = [text UTF8String];
    return bytes ? std::string(bytes, [text lengthOfBytesUsingEncoding:NSUTF8StringEncoding])
                 : std::string();
}

}  // namespace ostrel
