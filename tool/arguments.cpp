#include "arguments.h"

#ifdef _WIN32
#ifndef NOMINMAX
#define NOMINMAX
#endif
#define WIN32_LEAN_AND_MEAN
#include <windows.h>
// After windows.h, which it needs.
#include <shellapi.h>
#endif

namespace brenu::tool {

#ifdef _WIN32

namespace {

std::string ToUtf8(const wchar_t* text) {
  const int length = WideCharToMultiByte(CP_UTF8, 0, text, -1, nullptr, 0, nullptr, nullptr);
  std::string utf8(static_cast<std::size_t>(length), '\0');
  WideCharToMultiByte(CP_UTF8, 0, text, -1, utf8.data(), length, nullptr, nullptr);
  utf8.pop_back();  // the NUL
  return utf8;
}

}  // namespace

// What main is given has lost the characters that the code page of the system lacks.
std::vector<std::string> Arguments(int argc, char** argv) {
  int count = 0;
  wchar_t** const wide = CommandLineToArgvW(GetCommandLineW(), &count);
  if (wide == nullptr) return {argv + 1, argv + argc};
  std::vector<std::string> arguments;
  for (int i = 1; i < count; ++i) arguments.push_back(ToUtf8(wide[i]));
  LocalFree(wide);
  SetConsoleOutputCP(CP_UTF8);
  return arguments;
}

#else

std::vector<std::string> Arguments(int argc, char** argv) { return {argv + 1, argv + argc}; }

#endif

}  // namespace brenu::tool
