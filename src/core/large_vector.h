// Arrays of many megabytes.
#pragma once

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

namespace brenu {

namespace large_vector_detail {
void* Take(std::size_t bytes);
void GiveBack(void* memory, std::size_t bytes);
}  // namespace large_vector_detail

// Memory in large pages where the system has them: first use of small ones costs as much as the
// work on them.  New elements are not set, so that they are first touched by the thread that needs
// them.
template <typename Value>
struct LargeAllocator {
  using value_type = Value;
  LargeAllocator() = default;
  template <typename Other>
  explicit LargeAllocator(const LargeAllocator<Other>&) {}

  Value* allocate(std::size_t count) {
    return static_cast<Value*>(large_vector_detail::Take(count * sizeof(Value)));
  }
  void deallocate(Value* memory, std::size_t count) {
    large_vector_detail::GiveBack(memory, count * sizeof(Value));
  }
  template <typename Other>
  void construct(Other* place) {
    ::new (static_cast<void*>(place)) Other;
  }
  template <typename Other, typename... Arguments>
  void construct(Other* place, Arguments&&... arguments) {
    ::new (static_cast<void*>(place)) Other(std::forward<Arguments>(arguments)...);
  }
  bool operator==(const LargeAllocator&) const = default;
};

template <typename Value>
using LargeVector = std::vector<Value, LargeAllocator<Value>>;

// Gives the memory back; assigning {} would keep it.
template <typename Value, typename Allocator>
void Release(std::vector<Value, Allocator>& values) {
  std::vector<Value, Allocator>().swap(values);
}

}  // namespace brenu
