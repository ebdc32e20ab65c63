#include "review/encoding.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <iconv.h>
#endif

#include <algorithm>
#include <cstddef>
#include <optional>

namespace brenu {

namespace {

bool IsAscii(char c) { return static_cast<unsigned char>(c) < 0x80; }

// Empty when the bytes are no text of code page 936, or the system does not know it.
#ifdef _WIN32
std::optional<std::string> FromGbk(std::string_view bytes) {
  constexpr unsigned kCodePage = 936;
  const int size = static_cast<int>(bytes.size());
  std::wstring wide(bytes.size(), L'\0');
  const int count =
      MultiByteToWideChar(kCodePage, MB_ERR_INVALID_CHARS, bytes.data(), size, wide.data(), size);
  if (count <= 0) return std::nullopt;
  std::string text(static_cast<std::size_t>(count) * 3, '\0');
  const int length = WideCharToMultiByte(CP_UTF8, 0, wide.data(), count, text.data(),
                                         static_cast<int>(text.size()), nullptr, nullptr);
  text.resize(static_cast<std::size_t>(std::max(length, 0)));
  return text;
}
#else
std::optional<std::string> FromGbk(std::string_view bytes) {
  const iconv_t conversion = iconv_open("UTF-8", "GBK");
  if (conversion == reinterpret_cast<iconv_t>(-1)) return std::nullopt;
  std::string text(bytes.size() * 3, '\0');
  std::string source(bytes);
  char* in = source.data();
  char* out = text.data();
  std::size_t inLeft = source.size();
  std::size_t outLeft = text.size();
  const bool done = iconv(conversion, &in, &inLeft, &out, &outLeft) != static_cast<std::size_t>(-1);
  iconv_close(conversion);
  if (!done) return std::nullopt;
  text.resize(text.size() - outLeft);
  return text;
}
#endif

}  // namespace

std::size_t SequenceLength(std::string_view bytes) {
  const auto byte = [bytes](std::size_t i) {
    return i < bytes.size() ? static_cast<unsigned char>(bytes[i]) : 0U;
  };
  const unsigned first = byte(0);
  if (first < 0x80) return 1;
  std::size_t length = 0;
  unsigned least = 0x80;  // of the second byte: no longer form than needed, and
  unsigned most = 0xBF;   // neither surrogates nor beyond the last character
  if (first >= 0xC2 && first <= 0xDF) length = 2;
  if (first >= 0xE0 && first <= 0xEF) length = 3;
  if (first >= 0xF0 && first <= 0xF4) length = 4;
  if (first == 0xE0) least = 0xA0;
  if (first == 0xED) most = 0x9F;
  if (first == 0xF0) least = 0x90;
  if (first == 0xF4) most = 0x8F;
  if (length == 0 || byte(1) < least || byte(1) > most) return 0;
  for (std::size_t i = 2; i < length; ++i) {
    if ((byte(i) & 0xC0U) != 0x80U) return 0;
  }
  return length;
}

bool IsUtf8(std::string_view bytes) {
  while (!bytes.empty()) {
    const std::size_t length = SequenceLength(bytes);
    if (length == 0) return false;
    bytes.remove_prefix(length);
  }
  return true;
}

std::string ToUtf8(std::string_view bytes) {
  if (IsUtf8(bytes)) return std::string(bytes);
  if (auto text = FromGbk(bytes)) return *std::move(text);
  std::string text(bytes);
  std::replace_if(
      text.begin(), text.end(), [](char c) { return !IsAscii(c); }, '?');
  return text;
}

}  // namespace brenu
