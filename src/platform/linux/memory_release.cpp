#include "platform/linux/memory_release.h"

#include <malloc.h>
#include <sys/mman.h>

#include <cctype>
#include <cstdint>
#include <fstream>
#include <sstream>
#include <string>
#include <utility>

namespace ostrel {
namespace {

// A range of addresses, as /proc/self/smaps tells of it.
struct Mapping {
    std::uintptr_t first = 0;
    std::uintptr_t end = 0;
    bool isReadOnlyFile = false;
    std::uint64_t changedKb = 0;  // pages that are not as in the file, in memory or swapped out
};

// "7f12-7f34 r--p 00000000 fe:00 1234   /usr/share/fonts/a.ttf"
Mapping mappingIn(const std::string& line) {
    std::istringstream words(line);
    Mapping mapping;
    char dash = 0;
    std::string access;
    std::string offset;
    std::string device;
    std::uint64_t inode = 0;
    words >> std::hex >> mapping.first >> dash >> mapping.end >> access >> offset >> device >>
        std::dec >> inode;
    mapping.isReadOnlyFile = words && inode != 0 && access.starts_with("r-");
    return mapping;
}

std::uint64_t kbIn(const std::string& line) {
    std::istringstream words(line);
    std::string name;
    std::uint64_t kb = 0;
    words >> name >> kb;
    return kb;
}

// Files are mapped and unmapped on the main thread alone, which is here: the list still holds.
void release(const Mapping& mapping) {
    if (mapping.isReadOnlyFile && mapping.changedKb == 0) {
        void* first = reinterpret_cast<void*>(mapping.first);  // NOLINT(performance-no-int-to-ptr)
        madvise(first, mapping.end - mapping.first, MADV_DONTNEED);
    }
}

}  // namespace

void releaseUnusedMemory() {
    malloc_trim(0);
    std::ifstream smaps("/proc/self/smaps");
    Mapping mapping;
    for (std::string line; std::getline(smaps, line);) {
        if (line.starts_with("Anonymous:") || line.starts_with("Swap:")) {
            mapping.changedKb += kbIn(line);
        } else if (std::islower(line[0]) || std::isdigit(line[0])) {
            release(std::exchange(mapping, mappingIn(line)));
        }
    }
}

}  // namespace ostrel
