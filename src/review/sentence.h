#pragma once

#include <string>

#include "core/finding.h"

namespace brenu {

// A finding in words: what is wrong, where, and what to do about it.  Names come out safe to show.
std::string SentenceOf(const Finding& finding);

// The code as a word for programs, such as "heights-unreached".
const char* IdOf(Code code);

}  // namespace brenu
