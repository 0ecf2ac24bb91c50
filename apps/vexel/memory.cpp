#include "memory.h"

#include <cstddef>
#include <cstdlib>
#include <limits>
#include <memory>

#if defined(__linux__) && defined(__GLIBC__)

#include <malloc.h>
#include <sys/mman.h>
#include <unistd.h>

namespace vexel::cli {

void PreferLargePages() {
  constexpr int kHeap = 256 << 20;          // of addresses, not of memory
  constexpr int kLargestOfHeap = 32 << 20;  // larger blocks get a mapping of their own
  constexpr int kUsualGrowth = 128 << 10;
  constexpr std::size_t kLargePage = 2 << 20;
  ::mallopt(M_MMAP_THRESHOLD, kLargestOfHeap);
  ::mallopt(M_TRIM_THRESHOLD, std::numeric_limits<int>::max());
  // One block makes the heap grow by all of that at once, where the system lets it; from then on it
  // grows as usual. (A block that nothing may look at would not be allocated at all.)
  char* const before = static_cast<char*>(::sbrk(0));
  ::mallopt(M_TOP_PAD, kHeap);
  void* volatile block = std::malloc(kLargestOfHeap / 2);
  std::free(block);
  ::mallopt(M_TOP_PAD, kUsualGrowth);
  auto grown = static_cast<std::size_t>(static_cast<char*>(::sbrk(0)) - before);
  void* begin = before;
  if (std::align(kLargePage, kLargePage, begin, grown) != nullptr)
    ::madvise(begin, grown, MADV_HUGEPAGE);
}

}  // namespace vexel::cli

#else

namespace vexel::cli {

void PreferLargePages() {}

}  // namespace vexel::cli

#endif
