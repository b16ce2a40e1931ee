#include "platform/linux/file_descriptor.h"

#include <cerrno>

namespace ostrel {

int FileDescriptor::close() {
    const int number = std::exchange(number_, -1);
    return number >= 0 && ::close(number) != 0 ? errno : 0;
}

}  // namespace ostrel
