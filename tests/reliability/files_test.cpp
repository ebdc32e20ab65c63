// What files suffer: full disks, rights, garbage.  Saving never leaves less than was there.
#ifdef __linux__
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <new>
#include <optional>
#include <string>
#include <tuple>

#include "io/replace_file.h"
#include "support/job.h"

namespace {

bool writeFails = false;  // after a few bytes
bool flushFails = false;
std::optional<int> readsLeft;  // after so many reads the next one fails

}  // namespace

// The linker sends the library's calls of write, fsync and fread here.
extern "C" {
ssize_t __real_write(int fd, const void* from, std::size_t size);
ssize_t __wrap_write(int fd, const void* from, std::size_t size) {
  if (!writeFails) return __real_write(fd, from, size);
  return size > 64 ? __real_write(fd, from, 64) : -1;
}
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
  }
  ~Files() override {
    writeFails = flushFails = false;
    readsLeft.reset();
    fs::permissions(m_folder, fs::perms::owner_all);
    fs::remove_all(m_folder);
  }

  std::string Path(const char* name) const { return (m_folder / name).string(); }
  std::string Text(const char* name) const {
    std::ifstream file(Path(name), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }
  std::int32_t Save(const char* name) const {
    return SaveBrenuAdjustFile(m_job, Path(name).c_str());
  }
  bool IsSaved(const char* name) const {
    return Text(name).starts_with("[PARAM]") && Text(name).find(kOld) == std::string::npos;
  }
  std::ptrdiff_t FileCount() const {
    return std::distance(fs::directory_iterator(m_folder), fs::directory_iterator());
  }

  const fs::path m_folder =
      fs::path(::testing::TempDir()) / ("files." + std::to_string(::getpid()));
  const Job m_job = Job({{"A", 1, 1, 2, 3}, {"B"}}, {{"A", {{"B", Levelled(1000, 1)}}}});
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
  ASSERT_TRUE(LeastSquareAdj(m_job) && ExportResultFile(m_job, Path("report").c_str()));
  const std::string report = Text("report");
  for (bool* fault : {&writeFails, &flushFails}) {
    *fault = true;
    EXPECT_EQ(Save("old"), 1);  // it could be opened
    EXPECT_EQ(Text("old"), kOld);
    EXPECT_FALSE(ExportResultFile(m_job, Path("report").c_str()));
    EXPECT_EQ(Text("report"), report);
    EXPECT_EQ(FileCount(), 2);
    *fault = false;
  }
  EXPECT_EQ(SaveBrenuAdjustFile(m_job, "/dev/full"), 1);
}

// Memory may end while a report is made row by row.
TEST_F(Files, ATextThatEndsTooSoonLeavesTheOldFile) {
  fs::create_directory(Path("folder"));
  const auto breaksOff = [](const TextSink& sink) {
    sink("new");
    throw std::bad_alloc();
  };
  for (const char* name : {"old", "never", "folder/never"}) {
    EXPECT_THROW(ReplaceFile(Path(name), breaksOff), std::bad_alloc);
  }
  EXPECT_EQ(Text("old"), kOld);
  fs::permissions(Path("old"), fs::perms(0666));
  fs::permissions(m_folder, fs::perms(0555));  // where files are written in place
  {
    const AsOrdinaryUser user;
    EXPECT_THROW(ReplaceFile(Path("old"), breaksOff), std::bad_alloc);
  }
  fs::permissions(m_folder, fs::perms(0777));
  EXPECT_EQ(Text("old"), kOld);
  EXPECT_EQ(FileCount(), 2);
  EXPECT_TRUE(fs::is_empty(Path("folder")));
}

TEST_F(Files, RightsAndLinksAreKept) {
  fs::permissions(Path("old"), fs::perms(0640));
  fs::create_symlink("old", Path("link"));
  fs::create_symlink("link", Path("link to link"));
  EXPECT_EQ(Save("link to link"), 1);
  EXPECT_TRUE(fs::is_symlink(Path("link to link")) && fs::is_symlink(Path("link")));
  EXPECT_FALSE(fs::is_symlink(Path("old")));
  EXPECT_TRUE(IsSaved("old"));
  EXPECT_EQ(fs::status(Path("old")).permissions(), fs::perms(0640));
  fs::create_symlink("new", Path("dangling"));
  EXPECT_EQ(Save("dangling"), 1);
  EXPECT_EQ(Text("new"), Text("old"));
  EXPECT_EQ(FileCount(), 5);
}

// In a closed folder, in one where everybody may replace his own files only, and where the group
// cannot be kept.  The administrator alone can make the last two different from any folder.
TEST_F(Files, WhatCannotBeReplacedIsWrittenInPlace) {
  for (const auto& [rights, group] : {std::pair(0555, 0), std::pair(01777, 0), {0777, 12345}}) {
    SCOPED_TRACE(rights);
    std::ofstream(Path("old")) << std::string(9999, '\n') << kOld;  // longer than the new text
    fs::permissions(Path("old"), fs::perms(0666));
    fs::permissions(m_folder, fs::perms(rights));
    const bool isGiven = ::chown(Path("old").c_str(), 0, static_cast<gid_t>(group)) == 0;
    const AsOrdinaryUser user;
    EXPECT_EQ(Save("old"), 1);
    EXPECT_TRUE(IsSaved("old"));
    EXPECT_EQ(FileCount(), 1);
    struct stat saved {};
    ASSERT_EQ(::stat(Path("old").c_str(), &saved), 0);
    EXPECT_TRUE(!isGiven || saved.st_gid == static_cast<gid_t>(group));
  }
  EXPECT_EQ(SaveBrenuAdjustFile(m_job, "/dev/null"), 1);
  const std::string name(250, 'n');  // no room for that of a file beside it
  std::ofstream(m_folder / name) << kOld;
  EXPECT_EQ(Save(name.c_str()), 1);
  EXPECT_TRUE(IsSaved(name.c_str()));
}

TEST_F(Files, WhatCannotBeOpenedIsRefused) {
  fs::permissions(Path("old"), fs::perms(0444));
  fs::permissions(m_folder, fs::perms(0777));
  const AsOrdinaryUser user;
  ASSERT_TRUE(LeastSquareAdj(m_job));
  for (const std::string& path : {m_folder.string(), Path("none/file"), Path("old"), {}}) {
    EXPECT_EQ(SaveBrenuAdjustFile(m_job, path.c_str()), 0) << path;
    EXPECT_FALSE(ExportResultFile(m_job, path.c_str())) << path;
  }
  EXPECT_EQ(Text("old"), kOld);
}

// What was read before the failure stays; the piece of a line at the failure is no line.
TEST_F(Files, AReadErrorIsNotTheEndOfTheFile) {
  std::string text = "[PT]\n";
  for (int i = 0; i < 6000; ++i) text += std::to_string(i) + ",11,1,2,3\n";  // 84 kB
  std::ofstream(Path("old")) << text;
  for (const auto read : {OpenBrenuAdjustFile, LoadKorvelAdjustFile}) {
    readsLeft = 1;
    const Job job;
    EXPECT_FALSE(read(job, Path("old").c_str()));
    EXPECT_LT(GetPointCount(job), 6000U);
    readsLeft.reset();
    const Job whole;
    EXPECT_TRUE(read(whole, Path("old").c_str()));
    EXPECT_EQ(GetPointCount(whole), read == OpenBrenuAdjustFile ? 6000U : 0U);
  }
}

// Skipped where lines are skipped, refused where they count, with what was before them kept.
TEST_F(Files, LongLinesAreNotHeldWhole) {
  rusage before{}, after{};
  ::getrusage(RUSAGE_SELF, &before);
  const std::tuple<bool (*)(AdjustmentContext*, const char*), const char*, bool> cases[] = {
      {OpenBrenuAdjustFile, "[PARAM]\nMO:1\n\n[PT]\nA,11,1,2,3\n\n[OBS]", true},
      {OpenBrenuAdjustFile, "[PT]\nA,11,1,2,3\n\n[PARAM]\nnote:", true},
      {OpenBrenuAdjustFile, "[PT]\nA,11,1,2,3\nB,", false},
      {LoadKorvelAdjustFile, "[STATION]\nA,11,1,2,3\nB,", false}};
  for (const auto& [read, start, isRead] : cases) {
    for (const char* end : {"", "\n"}) {
      std::ofstream(Path("old")) << start;
      fs::resize_file(Path("old"), 60'000'000);  // NUL bytes, no line feed
      std::ofstream(Path("old"), std::ios::app) << end;
      const Job job;
      EXPECT_EQ(read(job, Path("old").c_str()), isRead) << start;
      EXPECT_EQ(GetPointCount(job), 1U) << start;
    }
  }
  ::getrusage(RUSAGE_SELF, &after);
  EXPECT_LT(after.ru_maxrss - before.ru_maxrss, 50'000);  // kilobytes, with those a sanitizer keeps
}

}  // namespace
}  // namespace brenu::testing
#endif
