// Names of files as the system takes them, whatever the characters.
#pragma once

#include <cstdio>
#include <filesystem>
#include <string>

#ifdef _WIN32
#define WIN32_LEAN_AND_MEAN
#define NOMINMAX
#include <windows.h>
#endif

namespace brenu {

using FilePath = std::filesystem::path;

#ifdef _WIN32

inline FilePath PathFromCodePage(const char* text, unsigned codePage) {
  const int length = MultiByteToWideChar(codePage, 0, text, -1, nullptr, 0);
  std::wstring wide(static_cast<std::size_t>(length > 0 ? length : 1), L'\0');
  MultiByteToWideChar(codePage, 0, text, -1, wide.data(), length);
  return FilePath(wide.c_str());
}
// As the functions of the C interface take them: in the code page of the system.
inline FilePath NarrowPath(const char* text) { return PathFromCodePage(text, CP_ACP); }
inline FilePath Utf8Path(const char* text) { return PathFromCodePage(text, CP_UTF8); }

inline std::FILE* OpenFile(const FilePath& path, const char* mode) {
  return _wfopen(path.c_str(), std::wstring(mode, mode + std::char_traits<char>::length(mode)).c_str());
}

#else

// Paths are bytes here and passed on unchanged.
inline FilePath NarrowPath(const char* text) { return FilePath(text); }
inline FilePath Utf8Path(const char* text) { return FilePath(text); }

inline std::FILE* OpenFile(const FilePath& path, const char* mode) {
  return std::fopen(path.c_str(), mode);
}

#endif

}  // namespace brenu
