// Arrays of many megabytes.
#pragma once

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

namespace brenu {

// New elements are not set: they are first touched by the thread that needs them, and only if it
// does.
template <typename Value>
struct LargeAllocator {
  using value_type = Value;
  LargeAllocator() = default;
  template <typename Other>
  explicit LargeAllocator(const LargeAllocator<Other>&) {}

  // NOLINTBEGIN(readability-identifier-naming): names that the standard library asks for
  Value* allocate(std::size_t count) { return std::allocator<Value>().allocate(count); }
  void deallocate(Value* memory, std::size_t count) {
    std::allocator<Value>().deallocate(memory, count);
  }
  template <typename Other>
  void construct(Other* place) {
    ::new (static_cast<void*>(place)) Other;
  }
  template <typename Other, typename... Arguments>
  void construct(Other* place, Arguments&&... arguments) {
    ::new (static_cast<void*>(place)) Other(std::forward<Arguments>(arguments)...);
  }
  // NOLINTEND(readability-identifier-naming)
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
