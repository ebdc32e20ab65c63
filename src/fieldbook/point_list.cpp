#include "fieldbook/point_list.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "core/text_number.h"
#include "fieldbook/book_lines.h"

namespace brenu {

namespace {

std::vector<std::string_view> Fields(std::string_view line) {
  constexpr std::string_view kSeparators = ",;\t";
  const std::size_t first = line.find_first_of(kSeparators);
  const char separator = first == line.npos ? ',' : line[first];
  std::vector<std::string_view> fields;
  while (true) {
    const std::size_t end = line.find(separator);
    fields.push_back(Trimmed(line.substr(0, end)));
    if (end == line.npos) return fields;
    line.remove_prefix(end + 1);
  }
}

bool IsType(std::string_view field) {
  return field.size() == 2 && field.find_first_not_of("01") == field.npos;
}

// Whether the field is a number or empty.
bool ReadNumber(std::string_view field, std::optional<double>& value) {
  value.reset();
  if (field.empty()) return true;
  const ParsedDouble number = ParseWholeDouble(field);
  if (!number.isWhole || !std::isfinite(number.value)) return false;
  value = number.value;
  return true;
}

bool ReadPoint(std::vector<std::string_view> fields, ListedPoint& point) {
  constexpr std::size_t kFewest = 3;
  std::string_view type = "11";
  if (fields.size() > kFewest && IsType(fields[1])) {
    type = fields[1];
    fields.erase(fields.begin() + 1);
  }
  if (fields.size() < kFewest || fields[0].empty()) return false;
  fields.resize(std::max<std::size_t>(fields.size(), 4));
  point.name = fields[0];
  const bool areNumbers = ReadNumber(fields[1], point.x) && ReadNumber(fields[2], point.y) &&
                          ReadNumber(fields[3], point.h);
  if (type[0] == '0') point.x = point.y = std::nullopt;
  if (type[1] == '0') point.h.reset();
  return areNumbers;
}

}  // namespace

Outcome ReadPointList(std::string_view text, std::vector<ListedPoint>& points) {
  BookLines lines(text);
  bool isFirst = true;
  while (lines.Next()) {
    const std::string_view line = Trimmed(lines.Text());
    if (line.empty() || line.starts_with('#')) continue;
    ListedPoint point;
    point.line = lines.Number();
    if (ReadPoint(Fields(line), point)) {
      points.push_back(std::move(point));
    } else if (!isFirst || line.find_first_of("0123456789") != line.npos) {
      return Finding{
          BRENU_CONTROL_FIELDS, Severity::kError, lines.Number(), std::string(line), {}, {}};
    }
    isFirst = false;
  }
  return {};
}

}  // namespace brenu
