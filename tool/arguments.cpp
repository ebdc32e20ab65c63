#include "arguments.h"

#ifdef _WIN32
#define WIN32_LEAN_AND_MEAN
#include <windows.h>
#endif

namespace brenu::tool {

#ifdef _WIN32

namespace {

std::string ToUtf8(const wchar_t* text) {
  const int length = WideCharToMultiByte(CP_UTF8, 0, text, -1, nullptr, 0, nullptr, nullptr);
  std::string utf8(static_cast<std::size_t>(length > 0 ? length : 1), '\0');
  WideCharToMultiByte(CP_UTF8, 0, text, -1, utf8.data(), length, nullptr, nullptr);
  utf8.pop_back();  // the NUL
  return utf8;
}

}  // namespace

std::vector<std::string> Arguments(int argc, SystemChar** argv) {
  SetConsoleOutputCP(CP_UTF8);
  std::vector<std::string> arguments;
  for (int i = 1; i < argc; ++i) arguments.push_back(ToUtf8(argv[i]));
  return arguments;
}

#else

std::vector<std::string> Arguments(int argc, SystemChar** argv) { return {argv + 1, argv + argc}; }

#endif

}  // namespace brenu::tool
