#pragma once

#include <cstdint>
#include <string>

#include "core/finding.h"
#include "review/language.h"

namespace brenu {

// A finding in words: what is wrong, where, and what to do about it.  Names come out safe to show.
std::string SentenceOf(const Finding& finding, Language language = Language::kEnglish);

// The code as a word for programs, such as "heights-unreached"; "nothing" for no code.
const char* IdOf(std::int32_t code);

}  // namespace brenu
