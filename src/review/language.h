#pragma once

#include <cstdint>

namespace brenu {

enum class Language : std::uint8_t { kEnglish, kChinese };

// A text of the reports in each language.
struct Words {
  const char* english;
  const char* chinese;

  constexpr const char* In(Language language) const {
    return language == Language::kEnglish ? english : chinese;
  }
};

}  // namespace brenu
