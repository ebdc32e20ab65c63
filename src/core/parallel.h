// Work on all cores.  What is computed never depends on how many there are: threads share out whole
// items, and each item is computed as one thread alone would.
#pragma once

#include <algorithm>
#include <cstddef>
#include <type_traits>

namespace brenu {

// How many threads a computation uses, at least 1: what was set, else the environment variable
// BRENU_THREADS, else what the hardware has.
std::size_t ThreadCount();
// For all computations that begin from now on; 0 forgets what was set.
void SetThreadCount(std::size_t count);

// A team of threads for the calls of ForEach that this thread makes until the end of the object.
// They start with the first call that has work for them and are gone with the team.  Inside of
// another team it adds nothing.
class ThreadTeam {
 public:
  ThreadTeam();
  ~ThreadTeam();
  ThreadTeam(const ThreadTeam&) = delete;
  ThreadTeam& operator=(const ThreadTeam&) = delete;

  class Threads;

 private:
  bool m_isOwn = false;
};

// How many may work at a time in a call of ForEach made here: 1 without a team, and inside of work.
std::size_t WorkerCount();

namespace parallel_detail {
using Work = void (*)(void* context, std::size_t item, std::size_t worker);
void Run(std::size_t count, Work work, void* context);
}  // namespace parallel_detail

// Calls work(item, worker) for the items 0..count-1, each once, in any order and side by side;
// `worker` numbers those that work at a time, below WorkerCount().  An exception ends it and comes
// out here.
template <typename F>
void ForEach(std::size_t count, F&& work) {
  parallel_detail::Run(
      count,
      [](void* context, std::size_t item, std::size_t worker) {
        (*static_cast<std::remove_reference_t<F>*>(context))(item, worker);
      },
      &work);
}

// Calls work(begin, end) for the numbers 0..count-1 in parts of `size`, side by side.
template <typename F>
void ForEachPart(std::size_t count, std::size_t size, F&& work) {
  ForEach((count + size - 1) / size, [&](std::size_t part, std::size_t) {
    work(part * size, std::min(count, (part + 1) * size));
  });
}

}  // namespace brenu
