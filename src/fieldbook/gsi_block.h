// A line of GSI: blocks of 7 characters of head, 8 or 16 of data, and a blank.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace brenu {

struct GsiWord {
  int index = 0;      // of two figures, or three
  char source = '.';  // where the value comes from
  char unit = '.';    // in which it is
  bool isNegative = false;
  std::string_view text;    // the whole word, as it stands
  std::string_view data;    // behind the sign
  bool isComplete = false;  // whether no character of the data is missing

  bool IsEntered() const { return source == '1' || source == '5'; }
  // Whether it holds a number: not dashes, and no figure is cut off.
  bool IsNumber() const { return Figures().has_value(); }
  // Metres, radians; absent for what is no number, and for a unit of another kind.
  std::optional<double> Length() const;
  std::optional<double> Angle() const;
  // Without the zeros and blanks in front that fill a name.
  std::string_view Name() const;

 private:
  std::optional<double> Figures() const;
};

struct GsiBlock {
  std::vector<GsiWord> words;
  std::optional<int> number;  // the running one, when the first word has it
  std::string_view damage;    // from where the line cannot be cut into words; empty if it can

  const GsiWord* Find(int index) const;
  bool Has(int index) const { return Find(index) != nullptr; }
};

// Cuts a line by position; the words of `block` point into it.
void CutGsiLine(std::string_view line, GsiBlock& block);

}  // namespace brenu
