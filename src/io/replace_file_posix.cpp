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
  Descriptor(Descriptor&& other) noexcept : m_fd(std::exchange(other.m_fd, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(m_fd, other.m_fd);
    return *this;
  }

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

// A new file that appears under its name only when it is complete.  Where the system knows files
// without a name (and can name them later) it has none before, so that nothing stays behind should
// the process end on the way; elsewhere it stands beside its target until then.
class Sibling {
 public:
  explicit Sibling(std::string target)
      : m_target(std::move(target)), m_file(OpenNameless(m_target)), m_isNameless(m_file.IsOpen()) {
    if (m_isNameless) return;
    m_path = m_target + ".XXXXXX";
    m_file = Descriptor(::mkstemp(m_path.data()));
    m_isThere = m_file.IsOpen();
  }
  ~Sibling() {
    if (m_isThere) ::unlink(m_path.c_str());
  }
  Sibling(const Sibling&) = delete;
  Sibling& operator=(const Sibling&) = delete;

  bool IsOpen() const { return m_file.IsOpen(); }
  bool IsNameless() const { return m_isNameless; }

  // Group and permissions of the old file, and its owner where files can be given away.
  bool TakeRights(const struct stat& old) {
    // The owner first: changing it takes special permission bits away.
    const bool grouped = ::fchown(m_file.Get(), old.st_uid, old.st_gid) == 0 ||
                         ::fchown(m_file.Get(), static_cast<uid_t>(-1), old.st_gid) == 0;
    return grouped && ::fchmod(m_file.Get(), old.st_mode & 07777) == 0;
  }
  bool Write(const TextSource& text) {
    bool isWritten = true;
    text([&](std::string_view piece) { isWritten = isWritten && WriteAll(m_file.Get(), piece); });
    return isWritten && ::fsync(m_file.Get()) == 0;
  }
  // As a new file; false when there is one of the name already.
  bool Appear() { return Name(m_target) && m_file.Close(); }
  bool TakePlace() {
    if (m_isNameless && !NameBeside()) return false;
    if (!m_file.Close()) return false;
    m_isThere = ::rename(m_path.c_str(), m_target.c_str()) != 0;
    return !m_isThere;
  }

 private:
  static Descriptor OpenNameless(const std::string& target) {
#ifdef O_TMPFILE
    const std::size_t end = target.rfind('/');
    const std::string folder = end == std::string::npos ? "." : target.substr(0, end + 1);
    if (::access("/proc/self/fd", X_OK) == 0) {
      return Descriptor(::open(folder.c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, 0666));
    }
#else
    static_cast<void>(target);
#endif
    return Descriptor(-1);
  }
  bool Name(const std::string& path) const {
    const std::string open = "/proc/self/fd/" + std::to_string(m_file.Get());
    return ::linkat(AT_FDCWD, open.c_str(), AT_FDCWD, path.c_str(), AT_SYMLINK_FOLLOW) == 0;
  }
  // A new file cannot be named over an old one at once: for a moment it stands beside it.
  bool NameBeside() {
    constexpr int kAttempts = 100;
    for (int i = 0; i < kAttempts && !m_isThere; ++i) {
      m_path = m_target + "." + std::to_string(::getpid()) + "-" + std::to_string(i);
      m_isThere = Name(m_path);
      if (!m_isThere && errno != EEXIST) return false;
    }
    return m_isThere;
  }

  std::string m_target, m_path;
  Descriptor m_file;
  bool m_isNameless;
  bool m_isThere = false;  // under m_path
};

Replaced Outcome(bool done) { return done ? Replaced::kDone : Replaced::kNotWritten; }

// Nothing is touched before the whole text stands.
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
                                    const TextSource& text) {
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

// Nothing where the file has to be made before it is written.
std::optional<Replaced> WriteNew(const FilePath& path, const TextSource& text) {
  Sibling file(path.native());
  if (!file.IsOpen() || !file.IsNameless()) return std::nullopt;
  if (!file.Write(text)) return Replaced::kNotWritten;
  return file.Appear() ? std::optional(Replaced::kDone) : std::nullopt;
}

}  // namespace

Replaced ReplaceFile(const FilePath& path, const TextSource& text) {
  Descriptor file(::open(path.c_str(), O_WRONLY | O_CLOEXEC));
  if (!file.IsOpen() && errno == ENOENT) {
    if (const auto created = WriteNew(path, text)) return *created;
    const std::string whole = WholeText(text);
    Descriptor opened(::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666));
    return opened.IsOpen() ? WriteInPlace(opened, false, whole) : Replaced::kNotOpened;
  }
  struct stat old {};
  if (!file.IsOpen() || ::fstat(file.Get(), &old) != 0) return Replaced::kNotOpened;
  if (!S_ISREG(old.st_mode)) return WriteInPlace(file, false, WholeText(text));
  const std::optional<Replaced> replaced = WriteBeside(path, old, text);
  return replaced ? *replaced : WriteInPlace(file, true, WholeText(text));
}

}  // namespace brenu
