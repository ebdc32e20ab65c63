// Runs the built program as a process on files in a folder of the test's own.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>
#ifndef _WIN32
#include <sys/wait.h>
#endif

#include "support/network_text.h"

namespace brenu::testing {

using ::testing::ContainsRegex;
using ::testing::HasSubstr;
using ::testing::Not;

struct Outcome {
  int status;
  std::string out, err;
};

class ProgramTest : public ::testing::Test {
 protected:
  void SetUp() override { std::filesystem::create_directories(m_folder); }
  void TearDown() override { std::filesystem::remove_all(m_folder); }

  // Writes the text byte for byte and gives the path.
  std::string Write(const std::string& text) const {
    std::ofstream(m_folder / "net.txt", std::ios::binary) << text;
    return (m_folder / "net.txt").string();
  }
  std::string Folder() const { return m_folder.string(); }
  // Empty when there is no such file.
  static std::string Read(const std::filesystem::path& path) {
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), {}};
  }

  Outcome Execute(const std::string& arguments) const {
    const auto out = m_folder / "out";
    const auto err = m_folder / "err";
    std::string command = "\"" BRENU_PROGRAM "\" " + arguments + " > \"" + out.string() +
                          "\" 2> \"" + err.string() + '"';
#ifdef _WIN32
    const int status = std::system(('"' + command + '"').c_str());
#else
    const int raw = std::system(command.c_str());
    const int status = WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
#endif
    return {status, Read(out), Read(err)};
  }
  // A command with its options on a file of this text.
  Outcome On(const std::string& text, const std::string& command) const {
    return Execute(command + " \"" + Write(text) + '"');
  }

  // That the command is done without a warning, and its output holds each of the texts.
  void ExpectOutput(const std::string& text, const std::vector<std::string>& regularExpressions,
                    const std::string& command = "adjust --no-verdict") const {
    const Outcome run = On(text, command);
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.err, "");
    for (const std::string& telling : regularExpressions) {
      EXPECT_THAT(run.out, ContainsRegex(telling));
    }
  }

  // That the command ends with this status, one sentence that holds the text, and no output.
  void ExpectFailure(const std::string& text, int status, const std::string& telling,
                     const std::string& command = "adjust") const {
    const Outcome run = On(text, command);
    EXPECT_EQ(run.status, status) << telling;
    EXPECT_NE(run.err.find(telling), std::string::npos) << run.err;
    EXPECT_EQ(run.err.find('\n') + 1, run.err.size()) << run.err;
    EXPECT_EQ(run.out, "");
  }

 private:
  std::filesystem::path m_folder =
      std::filesystem::temp_directory_path() / ("brenu-" + std::to_string(std::random_device{}()));
};

}  // namespace brenu::testing
