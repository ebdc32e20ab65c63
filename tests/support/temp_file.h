// A file that a test writes and reads, byte for byte; gone after the test.
#pragma once

#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <string_view>

namespace brenu::testing {

class TempFile {
 public:
  // Tests run in several processes at once, of several checkouts too.
  explicit TempFile(std::string_view content = {})
      : m_path(::testing::TempDir() + "brenu-test-" + std::to_string(std::random_device()())) {
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
