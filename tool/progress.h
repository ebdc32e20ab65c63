#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>

#include "review/language.h"

namespace brenu::tool {

// Shows on the standard error what the program is doing and for how long it has been at work: one
// line, written over four times a second, on a terminal only, and only once a second has passed.
// The line is gone when this object is.
class Progress {
 public:
  explicit Progress(Language language);
  ~Progress() { Stop(); }
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  // What comes next, such as "adjusting".
  void Enter(const Words& stage) { Put(stage.In(m_language)); }
  // A round of data snooping.
  void EnterRound(int round);
  // Takes the line off, before anything else is written; nothing is shown after it.
  void Stop();

 private:
  void Put(std::string stage);
  void Show();

  const Language m_language;
  std::chrono::steady_clock::time_point m_start = std::chrono::steady_clock::now();
  std::mutex m_mutex;  // guards the next two
  std::string m_stage;
  bool m_stopped = false;
  std::condition_variable m_wake;
  std::thread m_thread;  // not started without a terminal
};

// Begins a line on the standard error: on a terminal it takes off what the progress shows there.
const char* LineStart();

}  // namespace brenu::tool
