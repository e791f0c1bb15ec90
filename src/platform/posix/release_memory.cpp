#include "platform/posix/release_memory.h"

#include <link.h>
#include <malloc.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>

namespace brimlo {
namespace {

/// Drops only segments that are executable and not writable: the others hold relocated data.
int releaseCode(dl_phdr_info* object, std::size_t, void*) {
  const auto page = static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE));
  for (int i = 0; i < object->dlpi_phnum; ++i) {
    const ElfW(Phdr)& segment = object->dlpi_phdr[i];
    const bool isCode =
        segment.p_type == PT_LOAD && (segment.p_flags & PF_X) != 0 && (segment.p_flags & PF_W) == 0;
    if (!isCode) continue;
    const std::uintptr_t begin = object->dlpi_addr + segment.p_vaddr;
    const std::uintptr_t end = begin + segment.p_memsz;
    const std::uintptr_t first = begin / page * page;
    madvise(reinterpret_cast<void*>(first), end - first, MADV_DONTNEED);
  }
  return 0;
}

}  // namespace

void releaseStartUpMemory() {
  malloc_trim(0);
  dl_iterate_phdr(releaseCode, nullptr);
}

}  // namespace brimlo
