#include "platform/linux/memory_release.h"

#include <elf.h>
#include <link.h>
#include <malloc.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>

namespace ostrel {
namespace {

using Segment = ElfW(Phdr);

// The headers of a program say addresses as numbers.
void* at(std::uintptr_t address) {
    return reinterpret_cast<void*>(address);  // NOLINT(performance-no-int-to-ptr)
}

// The loader then wrote into what is otherwise as it is on the disk.
bool isWrittenInto(const dl_phdr_info& object, const Segment& dynamic) {
    const auto* entry = static_cast<const ElfW(Dyn)*>(at(object.dlpi_addr + dynamic.p_vaddr));
    for (; entry->d_tag != DT_NULL; ++entry) {
        if (entry->d_tag == DT_TEXTREL ||
            (entry->d_tag == DT_FLAGS && (entry->d_un.d_val & DF_TEXTREL) != 0)) {
            return true;
        }
    }
    return false;
}

int releaseObject(dl_phdr_info* object, std::size_t /*size*/, void* /*unused*/) {
    const std::span<const Segment> segments(object->dlpi_phdr, object->dlpi_phnum);
    if (std::ranges::any_of(segments, [object](const Segment& segment) {
            return segment.p_type == PT_DYNAMIC && isWrittenInto(*object, segment);
        })) {
        return 0;
    }
    const auto page = static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE));
    for (const Segment& segment : segments) {
        if (segment.p_type != PT_LOAD || (segment.p_flags & PF_W) != 0) {
            continue;
        }
        const std::uintptr_t start = object->dlpi_addr + segment.p_vaddr;
        const std::uintptr_t first = start / page * page;
        madvise(at(first), start + segment.p_memsz - first, MADV_DONTNEED);
    }
    return 0;
}

}  // namespace

void releaseUnusedMemory() {
    malloc_trim(0);
    dl_iterate_phdr(releaseObject, nullptr);
}

}  // namespace ostrel
