#include "io/file_path.h"

#ifdef _WIN32
#include <string>
#ifndef NOMINMAX
#define NOMINMAX
#endif
#define WIN32_LEAN_AND_MEAN
#include <windows.h>
#endif

namespace brenu {

#ifdef _WIN32

namespace {

FilePath FromCodePage(const char* text, unsigned codePage) {
  const int length = MultiByteToWideChar(codePage, 0, text, -1, nullptr, 0);
  std::wstring wide(static_cast<std::size_t>(length > 0 ? length : 1), L'\0');
  MultiByteToWideChar(codePage, 0, text, -1, wide.data(), length);
  return FilePath(wide.c_str());
}

}  // namespace

FilePath NarrowPath(const char* text) { return FromCodePage(text, CP_ACP); }
FilePath Utf8Path(const char* text) { return FromCodePage(text, CP_UTF8); }

std::FILE* OpenFile(const FilePath& path, const char* mode) {
  const std::string narrow(mode);
  return _wfopen(path.c_str(), std::wstring(narrow.begin(), narrow.end()).c_str());
}

#else

FilePath NarrowPath(const char* text) { return {text}; }
FilePath Utf8Path(const char* text) { return {text}; }

std::FILE* OpenFile(const FilePath& path, const char* mode) {
  return std::fopen(path.c_str(), mode);
}

#endif

}  // namespace brenu
