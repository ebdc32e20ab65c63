#include <io.h>
#ifndef NOMINMAX
#define NOMINMAX
#endif
#define WIN32_LEAN_AND_MEAN
#include <windows.h>
#undef ReplaceFile  // a macro that would rename the function below

#include <cstdio>
#include <memory>
#include <string>
#include <utility>

#include "io/line_reader.h"
#include "io/replace_file.h"

namespace brenu {

namespace {

using FilePtr = std::unique_ptr<std::FILE, CloseFile>;

Replaced Ended(bool done) { return done ? Replaced::kDone : Replaced::kNotWritten; }

bool WriteAll(FilePtr file, std::string_view text) {
  const bool written = std::fwrite(text.data(), 1, text.size(), file.get()) == text.size() &&
                       std::fflush(file.get()) == 0;
  // Devices cannot be flushed to a disk.
  if (GetFileType(reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(file.get())))) ==
          FILE_TYPE_DISK &&
      _commit(_fileno(file.get())) != 0) {
    return false;
  }
  return std::fclose(file.release()) == 0 && written;
}

// Ordinary files are those that a new one may take the place of; a link or a device is not.
bool IsOrdinary(const FilePath& path) {
  const DWORD attributes = GetFileAttributesW(path.c_str());
  constexpr DWORD kOthers =
      FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT | FILE_ATTRIBUTE_DEVICE;
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & kOthers) == 0;
}

}  // namespace

Replaced ReplaceFile(const FilePath& given, std::string_view text) {
  // Whole and with backslashes: Wine finds the folder of no other.
  std::error_code error;
  FilePath path = std::filesystem::absolute(given, error).make_preferred();
  if (error) path = given;
  // Opened for appending: whether it may be written, with nothing changed.
  const bool isNew = GetFileAttributesW(path.c_str()) == INVALID_FILE_ATTRIBUTES;
  FilePtr file(OpenFile(path, isNew ? "w" : "a"));
  if (file == nullptr) return Replaced::kNotOpened;
  if (isNew) return Ended(WriteAll(std::move(file), text));
  file.reset();
  std::string own = std::to_string(GetCurrentProcessId());
  own += '-' + std::to_string(GetCurrentThreadId());
  FilePath beside = path;
  beside += '.' + own + ".tmp";
  FilePtr sibling(IsOrdinary(path) ? OpenFile(beside, "w") : nullptr);
  if (sibling == nullptr) {
    file.reset(OpenFile(path, "w"));
    return Ended(file != nullptr && WriteAll(std::move(file), text));
  }
  // ReplaceFileW keeps the attributes and the access rights of the old file.
  const bool done = WriteAll(std::move(sibling), text) &&
                    ::ReplaceFileW(path.c_str(), beside.c_str(), nullptr,
                                   REPLACEFILE_IGNORE_MERGE_ERRORS, nullptr, nullptr) != 0;
  if (!done) _wremove(beside.c_str());
  return Ended(done);
}

}  // namespace brenu
