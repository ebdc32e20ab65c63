// What files suffer: full disks, rights, garbage.  Saving never leaves less than was there.
#ifdef __linux__
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>

#include "support/job.h"
#include "support/temp_file.h"

namespace {

bool flushFails = false;
std::optional<int> readsLeft;  // after so many reads the next one fails

}  // namespace

// The linker sends the library's calls of fsync and fread here.
extern "C" {
int __wrap_fsync(int) { return flushFails ? -1 : 0; }
std::size_t __real_fread(void* to, std::size_t size, std::size_t count, std::FILE* file);
std::size_t __wrap_fread(void* to, std::size_t size, std::size_t count, std::FILE* file) {
  if (!readsLeft || (*readsLeft)-- > 0) return __real_fread(to, size, count, file);
  std::FILE* const broken = std::freopen("/proc/self/mem", "r", file);  // its first page: no memory
  return __real_fread(to, size, count, broken);
}
}

namespace brenu::testing {
namespace {

namespace fs = std::filesystem;
constexpr char kOld[] = "the only copy of yesterday's work\n";

class Files : public ::testing::Test {
 protected:
  Files() {
    fs::create_directories(m_folder);
    std::ofstream(Path("old")) << kOld;
    m_job.Add("A", 11, 1, 2, 3);
  }
  ~Files() override {
    flushFails = false;
    readsLeft.reset();
    fs::permissions(m_folder, fs::perms::owner_all);
    fs::remove_all(m_folder);
  }

  std::string Path(const char* name) const { return (m_folder / name).string(); }
  static std::string Text(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }
  std::int32_t Save(const std::string& path) { return SaveBrenuAdjustFile(m_job, path.c_str()); }
  std::ptrdiff_t FileCount() const {
    return std::distance(fs::directory_iterator(m_folder), fs::directory_iterator());
  }

  const fs::path m_folder =
      fs::path(::testing::TempDir()) / ("files." + std::to_string(::getpid()));
  Job m_job;
};

// Rights are not checked for the administrator.
class AsOrdinaryUser {
 public:
  AsOrdinaryUser() { m_changed = ::geteuid() == 0 && ::seteuid(65534) == 0; }
  ~AsOrdinaryUser() {
    if (m_changed && ::seteuid(0) != 0) std::abort();
  }
  AsOrdinaryUser(const AsOrdinaryUser&) = delete;
  AsOrdinaryUser& operator=(const AsOrdinaryUser&) = delete;

 private:
  bool m_changed;
};

TEST_F(Files, AFullDiskLeavesTheOldFile) {
  rlimit limit{};
  ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &limit), 0);
  auto* const handler = std::signal(SIGXFSZ, SIG_IGN);
  const rlimit full = {64, limit.rlim_max};
  ::setrlimit(RLIMIT_FSIZE, &full);
  const std::int32_t saved = Save(Path("old"));
  const bool reported = ExportResultFile(m_job, Path("old").c_str());
  ::setrlimit(RLIMIT_FSIZE, &limit);
  std::signal(SIGXFSZ, handler);
  EXPECT_EQ(saved, 1);  // it could be opened
  EXPECT_FALSE(reported);
  EXPECT_EQ(Text(Path("old")), kOld);
  EXPECT_EQ(FileCount(), 1);

  flushFails = true;
  EXPECT_EQ(Save(Path("old")), 1);
  EXPECT_EQ(Text(Path("old")), kOld);
  EXPECT_EQ(Save("/dev/full"), 1);
  EXPECT_EQ(FileCount(), 1);
}

TEST_F(Files, RightsAndLinksAreKept) {
  fs::permissions(Path("old"), fs::perms(0640));
  fs::create_symlink("old", Path("link"));
  fs::create_symlink("link", Path("link to link"));
  EXPECT_EQ(Save(Path("link to link")), 1);
  EXPECT_TRUE(fs::is_symlink(Path("link to link")) && fs::is_symlink(Path("link")));
  EXPECT_FALSE(fs::is_symlink(Path("old")));
  EXPECT_EQ(Text(Path("old")).substr(0, 7), "[PARAM]");
  EXPECT_EQ(fs::status(Path("old")).permissions(), fs::perms(0640));
  fs::create_symlink("new", Path("dangling"));
  EXPECT_EQ(Save(Path("dangling")), 1);
  EXPECT_EQ(Text(Path("new")), Text(Path("old")));
  EXPECT_EQ(FileCount(), 5);
}

TEST_F(Files, WhereNoFileCanBeAddedItIsWrittenInPlace) {
  fs::permissions(Path("old"), fs::perms(0666));
  fs::permissions(m_folder, fs::perms(0555));
  const AsOrdinaryUser user;
  EXPECT_EQ(Save(Path("old")), 1);
  EXPECT_EQ(Text(Path("old")).substr(0, 7), "[PARAM]");
  EXPECT_EQ(Save("/dev/null"), 1);
}

TEST_F(Files, WhatCannotBeOpenedIsRefused) {
  fs::permissions(Path("old"), fs::perms(0444));
  fs::permissions(m_folder, fs::perms(0777));
  for (const std::string& path : {m_folder.string(), Path("none/file"), std::string()}) {
    EXPECT_EQ(Save(path), 0) << path;
    EXPECT_FALSE(ExportResultFile(m_job, path.c_str())) << path;
  }
  const AsOrdinaryUser user;
  EXPECT_EQ(Save(Path("old")), 0);
  EXPECT_EQ(Text(Path("old")), kOld);
}

// What was read before the failure stays; the piece of a line at the failure is no line.
TEST_F(Files, AReadErrorIsNotTheEndOfTheFile) {
  std::string text = "[PT]\n";
  for (int i = 0; text.size() < 1 << 16; ++i) {
    text += std::to_string(i);
    text += ",11,1,2,3\n";
  }
  std::ofstream(Path("old")) << text;
  for (const auto read : {OpenBrenuAdjustFile, LoadKorvelAdjustFile}) {
    readsLeft = 1;
    const Job job;
    EXPECT_FALSE(read(job, Path("old").c_str()));
    readsLeft.reset();
    EXPECT_TRUE(read(Job(), Path("old").c_str()));
  }
}

TEST_F(Files, GarbageIsReadInBoundedMemory) {
  std::ofstream(Path("old")) << "[PT]\nA,11,1,2,3\n\n[OBS]";
  fs::resize_file(Path("old"), 200'000'000);  // NUL bytes, no line feed
  rusage before{};
  ::getrusage(RUSAGE_SELF, &before);
  const Job job;
  EXPECT_TRUE(OpenBrenuAdjustFile(job, Path("old").c_str()));
  EXPECT_EQ(GetPointCount(job), 1U);  // the header with NUL bytes is none
  rusage after{};
  ::getrusage(RUSAGE_SELF, &after);
  EXPECT_LT(after.ru_maxrss - before.ru_maxrss, 40'000);  // kilobytes
}

// Skipped where lines are skipped, refused where they count, with what was before them kept.
TEST(LongLines, AreNotHeldWhole) {
  const std::string junk(5'000'000, ',');
  for (const std::string end : {"\n", ""}) {
    const Job skipping;
    const TempFile skipped(junk + "\n[PARAM]\nnote:" + junk + "\n\n[PT]\nA,11,1,2,3\n\n" + junk +
                           end);
    EXPECT_TRUE(OpenBrenuAdjustFile(skipping, skipped.Path()));
    EXPECT_EQ(GetPointCount(skipping), 1U);
    const Job project;
    EXPECT_FALSE(OpenBrenuAdjustFile(project, TempFile("[PT]\nA,11,1,2,3\nB" + junk + end).Path()));
    EXPECT_EQ(GetPointCount(project), 1U);
    const Job station;
    EXPECT_FALSE(
        LoadKorvelAdjustFile(station, TempFile("[STATION]\nA,11,1,2,3\nB" + junk + end).Path()));
    EXPECT_EQ(GetPointCount(station), 1U);
  }
}

}  // namespace
}  // namespace brenu::testing
#endif
