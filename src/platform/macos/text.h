#pragma once

#import <Foundation/Foundation.h>

#include <string>
#include <string_view>

namespace ostrel {

// Empty for what is not valid UTF-8.
[[nodiscard]] NSString* _Nonnull toNSString(std::string_view utf8);

// Empty for nil.
[[nodiscard]] std::string toUtf8(NSString* _Nullable text);

}  // namespace ostrel
