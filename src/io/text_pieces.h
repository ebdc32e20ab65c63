// Texts that are made piece by piece, so that large ones never stand in memory as a whole.
#pragma once

#include <algorithm>
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "core/parallel.h"

namespace brenu {

// Takes the next piece of a text.
using TextSink = std::function<void(std::string_view piece)>;
// Passes a text on; each call the same.
using TextSource = std::function<void(const TextSink& sink)>;

inline std::string WholeText(const TextSource& source) {
  std::string text;
  source([&](std::string_view piece) { text += piece; });
  return text;
}

// Passes on the texts of the rows 0..count-1.  Parts of them are written side by side, some at a
// time, and wait for their turn: write(text, begin, end) appends the rows of a part.
template <typename Write>
void PassRows(std::size_t count, const TextSink& sink, Write&& write) {
  constexpr std::size_t kRows = 1024;
  constexpr std::size_t kPartsAtATime = 32;
  std::vector<std::string> texts(kPartsAtATime);
  for (std::size_t from = 0; from < count; from += kPartsAtATime * kRows) {
    const std::size_t some = std::min(count - from, kPartsAtATime * kRows);
    ForEachPart(some, kRows, [&](std::size_t begin, std::size_t end) {
      std::string& text = texts[begin / kRows];
      text.clear();
      write(text, from + begin, from + end);
    });
    for (std::size_t part = 0; part * kRows < some; ++part) sink(texts[part]);
  }
}

}  // namespace brenu
