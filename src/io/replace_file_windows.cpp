#include <algorithm>
#include <optional>
#include <string>
#include <utility>

#define WIN32_LEAN_AND_MEAN
#include <windows.h>
#undef ReplaceFile  // a macro that would rename the function below

#include "io/replace_file.h"

namespace brenu {

namespace {

// An open file, closed at the end of its life at the latest.
class Handle {
 public:
  Handle(const FilePath& path, DWORD access, DWORD creation)
      : m_handle(CreateFileW(path.c_str(), access,
                             FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                             creation, FILE_ATTRIBUTE_NORMAL, nullptr)) {}
  ~Handle() { Close(); }
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;

  bool IsOpen() const { return m_handle != INVALID_HANDLE_VALUE; }
  bool Close() {
    const HANDLE handle = std::exchange(m_handle, INVALID_HANDLE_VALUE);
    return handle == INVALID_HANDLE_VALUE || CloseHandle(handle) != 0;
  }
  bool Write(const TextSource& text) {
    bool isWritten = true;
    text([&](std::string_view piece) { isWritten = isWritten && WriteLines(piece); });
    // Devices cannot be flushed to a disk.
    return isWritten &&
           (GetFileType(m_handle) != FILE_TYPE_DISK || FlushFileBuffers(m_handle) != 0);
  }
  // Whether the system removes the file when it is closed, by the end of the process, too.
  bool SetTemporary(bool isTemporary) {
    FILE_DISPOSITION_INFO info{};
    info.DeleteFile = isTemporary ? TRUE : FALSE;
    return SetFileInformationByHandle(m_handle, FileDispositionInfo, &info, sizeof info) != 0;
  }

 private:
  // Lines end as the platform ends them.
  bool WriteLines(std::string_view text) {
    std::string bytes;
    bytes.reserve(text.size() + text.size() / 32);
    for (const char c : text) {
      if (c == '\n') bytes += '\r';
      bytes += c;
    }
    return WriteBytes(bytes);
  }
  bool WriteBytes(std::string_view bytes) {
    while (!bytes.empty()) {
      constexpr std::size_t kMost = 1 << 28;
      const auto size = static_cast<DWORD>(std::min(bytes.size(), kMost));
      DWORD written = 0;
      if (WriteFile(m_handle, bytes.data(), size, &written, nullptr) == 0 || written == 0) {
        return false;
      }
      bytes.remove_prefix(written);
    }
    return true;
  }

  HANDLE m_handle;
};

// Removes a file that is not to stay, should the system not have done so on closing it.
class Removal {
 public:
  explicit Removal(const FilePath& path) : m_path(path) {}
  ~Removal() {
    if (m_isDue) DeleteFileW(m_path.c_str());
  }
  Removal(const Removal&) = delete;
  Removal& operator=(const Removal&) = delete;

  void Start() { m_isDue = true; }
  void Stop() { m_isDue = false; }

 private:
  const FilePath& m_path;
  bool m_isDue = false;
};

Replaced Outcome(bool done) { return done ? Replaced::kDone : Replaced::kNotWritten; }

// Ordinary files are those that a new one may take the place of; a link or a device is not.
bool IsOrdinary(DWORD attributes) {
  constexpr DWORD kOthers =
      FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT | FILE_ATTRIBUTE_DEVICE;
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & kOthers) == 0;
}

// Nothing where no file can be made beside the old one.
std::optional<Replaced> WriteBeside(const FilePath& path, const TextSource& text) {
  FilePath beside = path;
  beside += L"." + std::to_wstring(GetCurrentProcessId()) + L"-" +
            std::to_wstring(GetCurrentThreadId()) + L".tmp";
  Removal removal(beside);  // after the file has been closed
  Handle sibling(beside, GENERIC_WRITE | DELETE, CREATE_NEW);
  if (!sibling.IsOpen()) return std::nullopt;
  removal.Start();
  sibling.SetTemporary(true);
  if (!sibling.Write(text)) return Replaced::kNotWritten;
  sibling.SetTemporary(false);
  // ReplaceFileW keeps the attributes and the access rights of the old file.
  const bool done =
      sibling.Close() && ReplaceFileW(path.c_str(), beside.c_str(), nullptr,
                                      REPLACEFILE_IGNORE_MERGE_ERRORS, nullptr, nullptr) != 0;
  if (done) removal.Stop();
  return Outcome(done);
}

}  // namespace

Replaced ReplaceFile(const FilePath& given, const TextSource& text) {
  // Whole and with backslashes: Wine finds the folder of no other.
  std::error_code error;
  FilePath path = std::filesystem::absolute(given, error).make_preferred();
  if (error) path = given;
  const DWORD attributes = GetFileAttributesW(path.c_str());
  {
    // Whether it may be written, with nothing changed.
    const bool isNew = attributes == INVALID_FILE_ATTRIBUTES;
    Handle file(path, isNew ? GENERIC_WRITE | DELETE : GENERIC_WRITE,
                isNew ? CREATE_NEW : OPEN_EXISTING);
    if (!file.IsOpen()) return Replaced::kNotOpened;
    if (isNew) {
      file.SetTemporary(true);
      const bool written = file.Write(text);
      if (written) file.SetTemporary(false);
      return Outcome(file.Close() && written);
    }
  }
  if (IsOrdinary(attributes)) {
    if (const auto replaced = WriteBeside(path, text)) return *replaced;
  }
  // Nothing is touched before the whole text stands.
  const std::string whole = WholeText(text);
  Handle file(path, GENERIC_WRITE, IsOrdinary(attributes) ? TRUNCATE_EXISTING : OPEN_EXISTING);
  const auto pass = [&](const TextSink& sink) { sink(whole); };
  return Outcome(file.IsOpen() && file.Write(pass) && file.Close());
}

}  // namespace brenu
