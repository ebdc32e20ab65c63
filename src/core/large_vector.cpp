#include "core/large_vector.h"

#include <new>

#ifdef __linux__
#include <sys/mman.h>
#endif

namespace brenu::large_vector_detail {

#ifdef __linux__

namespace {
constexpr std::size_t kLarge = std::size_t{1} << 21;  // bytes, from here on
}

// Straight from the system, and straight back to it: the heap keeps much of what comes and goes in
// such pieces.
void* Take(std::size_t bytes) {
  if (bytes < kLarge) return ::operator new(bytes);
  void* const memory =
      mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (memory == MAP_FAILED) throw std::bad_alloc();
  madvise(memory, bytes, MADV_HUGEPAGE);  // refused, the memory is as good as any
  return memory;
}

void GiveBack(void* memory, std::size_t bytes) {
  if (bytes < kLarge) {
    ::operator delete(memory);
  } else {
    munmap(memory, bytes);
  }
}

#else

void* Take(std::size_t bytes) { return ::operator new(bytes); }
void GiveBack(void* memory, std::size_t) { ::operator delete(memory); }

#endif

}  // namespace brenu::large_vector_detail
