#include "core/large_vector.h"

#include <new>

#ifdef __linux__
#include <sys/mman.h>
#endif

namespace brenu::large_vector_detail {

namespace {

constexpr std::align_val_t kPage{std::size_t{1} << 21};
constexpr std::size_t kLarge = std::size_t{1} << 22;  // from here on, bytes

}  // namespace

void* Take(std::size_t bytes) {
  if (bytes < kLarge) return ::operator new(bytes);
  void* const memory = ::operator new(bytes, kPage);
#ifdef __linux__
  madvise(memory, bytes, MADV_HUGEPAGE);  // refused, the memory is as good as any
#endif
  return memory;
}

void GiveBack(void* memory, std::size_t bytes) {
  if (bytes < kLarge) {
    ::operator delete(memory);
  } else {
    ::operator delete(memory, kPage);
  }
}

}  // namespace brenu::large_vector_detail
