// A file that a test writes and reads, byte for byte; gone after the test.
#pragma once

#include <gtest/gtest.h>

#include <atomic>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <string_view>

namespace brenu::testing {

class TempFile {
 public:
  // Tests may run in several processes, and in several checkouts at once.
  explicit TempFile(std::string_view content = {}) {
    static const std::string process = std::to_string(std::random_device{}());
    static std::atomic<int> count = 0;
    m_path = ::testing::TempDir() + "brenu-" + process + "." + std::to_string(++count) + ".txt";
    std::ofstream(m_path, std::ios::binary) << content;
  }
  ~TempFile() { std::remove(m_path.c_str()); }
  TempFile(const TempFile&) = delete;
  TempFile& operator=(const TempFile&) = delete;

  const char* Path() const { return m_path.c_str(); }
  // As text: the line ends of the platform read as line feeds.
  std::string Text() const {
    std::ifstream file(m_path);
    return {std::istreambuf_iterator<char>(file), {}};
  }

 private:
  std::string m_path;
};

}  // namespace brenu::testing
