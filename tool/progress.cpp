#include "progress.h"

#include <cstdio>
#include <system_error>
#include <utility>

#ifdef _WIN32
#include <io.h>
#else
#include <unistd.h>
#endif

namespace brenu::tool {

namespace {

constexpr std::chrono::milliseconds kSilence{1000};
constexpr std::chrono::milliseconds kInterval{250};

bool IsTerminal() {
#ifdef _WIN32
  return _isatty(_fileno(stderr)) != 0;
#else
  return isatty(fileno(stderr)) != 0;
#endif
}

}  // namespace

// Over what stands there with blanks: an escape sequence that erases is text to Windows consoles.
const char* LineStart() {
  return IsTerminal() ? "\r                                                \r" : "";
}

Progress::Progress(Language language) : m_language(language) {
  if (!IsTerminal()) return;
  try {
    m_thread = std::thread([this] { Show(); });
  } catch (const std::system_error&) {
    // Without a thread to spare the work is done unseen.
  }
}

void Progress::Put(std::string stage) {
  const std::lock_guard lock(m_mutex);
  m_stage = std::move(stage);
}

void Progress::EnterRound(int round) {
  Put(Words{"data snooping, round ", "粗差探测，第几轮："}.In(m_language) + std::to_string(round));
}

void Progress::Stop() {
  {
    const std::lock_guard lock(m_mutex);
    m_stopped = true;
  }
  m_wake.notify_one();
  if (m_thread.joinable()) m_thread.join();
}

void Progress::Show() {
  std::unique_lock lock(m_mutex);
  const auto stopped = [this] { return m_stopped; };
  if (m_wake.wait_for(lock, kSilence, stopped)) return;
  do {
    const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - m_start;
    std::fprintf(stderr, "%s%s ... %.0f s", LineStart(), m_stage.c_str(), elapsed.count());
    std::fflush(stderr);
  } while (!m_wake.wait_for(lock, kInterval, stopped));
  std::fputs(LineStart(), stderr);
}

}  // namespace brenu::tool
