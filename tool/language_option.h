#pragma once

#include <CLI/CLI.hpp>
#include <string>

#include "review/language.h"

namespace brenu::tool {

// Adds --lang to a command.
inline void AddLanguage(CLI::App& command, Language& language) {
  command
      .add_option_function<std::string>(
          "--lang",
          [&language](const std::string& name) {
            language = name == "zh" ? Language::kChinese : Language::kEnglish;
          },
          "language of all that people read: en or zh (that of the environment)")
      ->check(CLI::IsMember({"en", "zh"}))
      ->type_name("LANG");
}

}  // namespace brenu::tool
