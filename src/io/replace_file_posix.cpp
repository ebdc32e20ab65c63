#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <memory>
#include <string>
#include <utility>

#include "io/replace_file.h"

namespace brenu {

namespace {

// An open file, closed at the end of its life at the latest.
class Descriptor {
 public:
  explicit Descriptor(int fd) : m_fd(fd) {}
  ~Descriptor() { Close(); }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  bool IsOpen() const { return m_fd >= 0; }
  int Get() const { return m_fd; }
  bool Close() {
    const int fd = m_fd;
    m_fd = -1;
    return fd < 0 || ::close(fd) == 0;
  }

 private:
  int m_fd;
};

bool WriteAll(int fd, std::string_view text) {
  while (!text.empty()) {
    const ssize_t count = ::write(fd, text.data(), text.size());
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return false;
    text.remove_prefix(static_cast<std::size_t>(count));
  }
  return true;
}

// The file that a path leads to, symbolic links followed as far as they go; the path itself when
// that file does not exist.
std::string Resolve(const char* path) {
  const std::unique_ptr<char, void (*)(void*)> target(::realpath(path, nullptr), &std::free);
  return target ? target.get() : path;
}

// A new file beside the one to be replaced; removed again unless it takes that one's place.
class Sibling {
 public:
  explicit Sibling(std::string target)
      : m_target(std::move(target)),
        m_path(m_target + ".XXXXXX"),
        m_file(::mkstemp(m_path.data())) {}
  ~Sibling() {
    if (m_isThere) ::unlink(m_path.c_str());
  }
  Sibling(const Sibling&) = delete;
  Sibling& operator=(const Sibling&) = delete;

  bool IsOpen() const { return m_isThere; }

  bool TakeOver(const struct stat& old, std::string_view text) {
    // The owner first: changing it takes special permission bits away.
    [[maybe_unused]] const int owned = ::fchown(m_file.Get(), old.st_uid, old.st_gid);
    const bool complete = ::fchmod(m_file.Get(), old.st_mode & 07777) == 0 &&
                          WriteAll(m_file.Get(), text) && ::fsync(m_file.Get()) == 0 &&
                          m_file.Close();
    if (!complete || ::rename(m_path.c_str(), m_target.c_str()) != 0) return false;
    m_isThere = false;
    return true;
  }

 private:
  std::string m_target, m_path;
  Descriptor m_file;
  bool m_isThere = m_file.IsOpen();
};

Replaced Outcome(bool done) { return done ? Replaced::kDone : Replaced::kNotWritten; }

Replaced WriteInPlace(Descriptor& file, bool isOrdinary, std::string_view text) {
  const bool emptied = !isOrdinary || ::ftruncate(file.Get(), 0) == 0;
  if (!emptied || !WriteAll(file.Get(), text)) return Replaced::kNotWritten;
  // EINVAL: a device without anything to flush.
  const bool flushed = ::fsync(file.Get()) == 0 || errno == EINVAL;
  return Outcome(file.Close() && flushed);
}

}  // namespace

Replaced ReplaceFile(const char* path, std::string_view text) {
  Descriptor file(::open(path, O_WRONLY | O_CLOEXEC));
  if (!file.IsOpen() && errno == ENOENT) {
    // A new file has nothing to lose.
    Descriptor created(::open(path, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666));
    return created.IsOpen() ? WriteInPlace(created, false, text) : Replaced::kNotOpened;
  }
  struct stat old {};
  if (!file.IsOpen() || ::fstat(file.Get(), &old) != 0) return Replaced::kNotOpened;
  if (!S_ISREG(old.st_mode)) return WriteInPlace(file, false, text);
  Sibling sibling(Resolve(path));
  if (sibling.IsOpen()) return Outcome(sibling.TakeOver(old, text));
  // Only where the folder is closed to new files: with a full disk, the old contents must stay.
  const bool isClosed =
      errno == EACCES || errno == EPERM || errno == EROFS || errno == ENAMETOOLONG;
  return isClosed ? WriteInPlace(file, true, text) : Replaced::kNotWritten;
}

}  // namespace brenu
