#include "core/parallel.h"

#include <atomic>
#include <condition_variable>
#include <cstdlib>
#include <exception>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

namespace brenu {

namespace {

constexpr std::size_t kMostThreads = 256;

std::atomic<std::size_t> g_threadCount{0};  // 0: not set

std::size_t DefaultThreadCount() {
  const char* const wanted = std::getenv("BRENU_THREADS");
  const long count = wanted == nullptr ? 0 : std::strtol(wanted, nullptr, 10);
  if (count > 0) return static_cast<std::size_t>(count);
  return std::thread::hardware_concurrency();
}

}  // namespace

std::size_t ThreadCount() {
  std::size_t count = g_threadCount;
  if (count == 0) count = DefaultThreadCount();
  return std::clamp<std::size_t>(count, 1, kMostThreads);
}

void SetThreadCount(std::size_t count) { g_threadCount = count; }

namespace {
thread_local bool t_isWorking = false;                  // inside of work that is shared out
thread_local std::size_t t_teamSize = 1;                // of the team that this thread has opened
thread_local ThreadTeam::Threads* t_threads = nullptr;  // once they have started
}  // namespace

// The threads of a team beside the one that opened it.
class ThreadTeam::Threads {
 public:
  explicit Threads(std::size_t count) {
    m_threads.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
      try {
        m_threads.emplace_back([this, i] { Serve(i + 1); });
      } catch (const std::exception&) {
        break;  // there are no more to be had: these will do
      }
    }
  }

  ~Threads() {
    {
      const std::lock_guard lock(m_mutex);
      m_isOver = true;
    }
    m_wake.notify_all();
    for (std::thread& thread : m_threads) thread.join();
  }

  Threads(const Threads&) = delete;
  Threads& operator=(const Threads&) = delete;

  void Run(std::size_t count, parallel_detail::Work work, void* context) {
    {
      const std::lock_guard lock(m_mutex);
      m_work = work;
      m_context = context;
      m_count = count;
      m_next = 0;
      m_busy = m_threads.size();
      ++m_call;
    }
    m_wake.notify_all();
    TakePart(0);
    std::unique_lock lock(m_mutex);
    m_done.wait(lock, [this] { return m_busy == 0; });
    if (m_error) std::rethrow_exception(std::exchange(m_error, nullptr));
  }

 private:
  void Serve(std::size_t worker) {
    std::size_t seen = 0;
    for (;;) {
      {
        std::unique_lock lock(m_mutex);
        m_wake.wait(lock, [&] { return m_isOver || m_call != seen; });
        if (m_isOver) return;
        seen = m_call;
      }
      TakePart(worker);
      const std::lock_guard lock(m_mutex);
      if (--m_busy == 0) m_done.notify_one();
    }
  }

  void TakePart(std::size_t worker) {
    t_isWorking = true;
    try {
      for (;;) {
        const std::size_t item = m_next.fetch_add(1);
        if (item >= m_count) break;
        m_work(m_context, item, worker);
      }
    } catch (...) {
      m_next = m_count;  // the others stop
      const std::lock_guard lock(m_mutex);
      if (!m_error) m_error = std::current_exception();
    }
    t_isWorking = false;
  }

  std::vector<std::thread> m_threads;
  std::mutex m_mutex;
  std::condition_variable m_wake, m_done;
  parallel_detail::Work m_work = nullptr;  // of the current call, like what follows
  void* m_context = nullptr;
  std::size_t m_count = 0;
  std::atomic<std::size_t> m_next{0};
  std::size_t m_busy = 0;  // threads that have not ended their part
  std::size_t m_call = 0;
  std::exception_ptr m_error;
  bool m_isOver = false;
};

ThreadTeam::ThreadTeam() : m_isOwn(!t_isWorking && t_teamSize == 1) {
  if (m_isOwn) t_teamSize = ThreadCount();
}

ThreadTeam::~ThreadTeam() {
  if (!m_isOwn) return;
  delete std::exchange(t_threads, nullptr);
  t_teamSize = 1;
}

std::size_t WorkerCount() { return t_isWorking ? 1 : t_teamSize; }

void parallel_detail::Run(std::size_t count, Work work, void* context) {
  if (count > 1 && WorkerCount() > 1) {
    if (t_threads == nullptr) t_threads = new ThreadTeam::Threads(t_teamSize - 1);
    t_threads->Run(count, work, context);
    return;
  }
  for (std::size_t item = 0; item < count; ++item) work(context, item, 0);
}

}  // namespace brenu
