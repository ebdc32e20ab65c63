#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <memory>
#include <optional>
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

// The file that a path leads to, symbolic links followed; empty when the system cannot tell.
std::string Resolve(const FilePath& path) {
  const std::unique_ptr<char, void (*)(void*)> target(::realpath(path.c_str(), nullptr),
                                                      &std::free);
  return target ? target.get() : std::string();
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

  // Group and permissions of the old file, and its owner where files can be given away.
  bool TakeRights(const struct stat& old) {
    // The owner first: changing it takes special permission bits away.
    const bool grouped = ::fchown(m_file.Get(), old.st_uid, old.st_gid) == 0 ||
                         ::fchown(m_file.Get(), static_cast<uid_t>(-1), old.st_gid) == 0;
    return grouped && ::fchmod(m_file.Get(), old.st_mode & 07777) == 0;
  }
  bool Write(std::string_view text) {
    return WriteAll(m_file.Get(), text) && ::fsync(m_file.Get()) == 0 && m_file.Close();
  }
  bool TakePlace() {
    m_isThere = ::rename(m_path.c_str(), m_target.c_str()) != 0;
    return !m_isThere;
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

// Whether a new file may not be made, or may not take the old one's place, where writing the old
// one is another matter: a closed folder, somebody else's file in a folder of all, a mounted file.
bool IsForbidden(int error) {
  return error == EACCES || error == EPERM || error == EROFS || error == ENAMETOOLONG ||
         error == EBUSY || error == EXDEV;
}

// Nothing where the file has to be written in place.  It has not when the disk is full: the old
// contents must stay.
std::optional<Replaced> WriteBeside(const FilePath& path, const struct stat& old,
                                    std::string_view text) {
  std::string target = Resolve(path);
  if (target.empty()) return std::nullopt;
  Sibling sibling(std::move(target));
  if (sibling.IsOpen()) {
    if (!sibling.TakeRights(old)) return std::nullopt;
    if (!sibling.Write(text)) return Replaced::kNotWritten;
    if (sibling.TakePlace()) return Replaced::kDone;
  }
  return IsForbidden(errno) ? std::nullopt : std::optional(Replaced::kNotWritten);
}

}  // namespace

Replaced ReplaceFile(const FilePath& path, std::string_view text) {
  Descriptor file(::open(path.c_str(), O_WRONLY | O_CLOEXEC));
  if (!file.IsOpen() && errno == ENOENT) {
    // A new file has nothing to lose.
    Descriptor created(::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666));
    return created.IsOpen() ? WriteInPlace(created, false, text) : Replaced::kNotOpened;
  }
  struct stat old {};
  if (!file.IsOpen() || ::fstat(file.Get(), &old) != 0) return Replaced::kNotOpened;
  if (!S_ISREG(old.st_mode)) return WriteInPlace(file, false, text);
  const std::optional<Replaced> replaced = WriteBeside(path, old, text);
  return replaced ? *replaced : WriteInPlace(file, true, text);
}

}  // namespace brenu
