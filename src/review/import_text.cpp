#include "review/import_text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <unordered_map>
#include <utility>

#include "core/angles.h"
#include "core/text_number.h"
#include "review/sentence.h"
#include "review/text.h"

namespace brenu {

namespace {

constexpr Words kRoles[] = {{"header", "文件头"},
                            {"instrument", "仪器"},
                            {"station", "测站"},
                            {"heights or constants", "高度或常数"},
                            {"sight", "照准"},
                            {"control point", "控制点"},
                            {"coordinates", "坐标"},
                            {"orientation", "定向"},
                            {"level line", "水准路线"},
                            {"level reading", "水准读数"},
                            {"height difference", "高差"},
                            {"result", "计算结果"},
                            {"code", "编码"},
                            {"note", "备注"},
                            {"transfer", "传输"},
                            {"left out", "舍去"}};
static_assert(std::size(kRoles) == static_cast<std::size_t>(LineRole::kLeftOut) + 1);

struct StepText {
  Words name;
  bool isAngle;
};
constexpr StepText kSteps[] = {
    {{"faces, direction", "盘左盘右平均，方向"}, true},
    {{"faces, zenith angle", "盘左盘右平均，天顶距"}, true},
    {{"scale and constant of the file", "文件中的乘常数和加常数"}, false},
    {{"atmosphere", "气象改正"}, false},
    {{"constant and scale", "加常数和乘常数"}, false},
    {{"horizontal distance", "化为平距"}, false},
    {{"curvature and refraction", "地球曲率和折光"}, false},
    {{"eccentric prism, distance", "偏心棱镜，距离"}, false},
    {{"eccentric prism, direction", "偏心棱镜，方向"}, true},
    {{"to the ellipsoid", "归算到椭球面"}, false},
    {{"into the plane", "归算到投影平面"}, false},
    {{"set turned", "测回归零"}, true},
    {{"mean of sets, direction", "各测回平均，方向"}, true},
    {{"mean of sets, distance", "各测回平均，距离"}, false},
    {{"setup turned", "设站归零"}, true},
    {{"mean of setups, direction", "各设站平均，方向"}, true},
    {{"mean of setups, distance", "各设站平均，距离"}, false},
    {{"height difference", "高差"}, false},
    {{"level setup", "水准测站"}, false},
    {{"mean of level lines", "水准路线平均"}, false}};
static_assert(std::size(kSteps) == static_cast<std::size_t>(Step::kLevelLine) + 1);

const char* RoleText(LineRole role, Language language) {
  return kRoles[static_cast<std::size_t>(role)].In(language);
}

std::string ValueText(double value, bool isAngle) {
  return isAngle ? DegreesMinutesSeconds(FullCircle(value)) : Fixed(value, 5);
}

// Angles in arc-seconds.
std::string CorrectionText(double value, bool isAngle) {
  const double shown = isAngle ? HalfCircle(value) * kRho : value;
  std::string text;
  if (shown >= 0.0) text += '+';
  text += Fixed(shown, isAngle ? 2 : 5);
  if (isAngle) text += '"';
  return text;
}

void AppendPadded(std::string& out, std::string_view text, std::size_t width) {
  out += text;
  if (const std::size_t own = WidthOf(text); own < width) out.append(width - own, ' ');
  out += "  ";
}

constexpr Words kAfterLine = {"", " 行"};

// "line 5", "第 5 行"
std::string LineText(std::int32_t line, Language language) {
  return Words{"line ", "第 "}.In(language) + std::to_string(line) + kAfterLine.In(language);
}

// "line 5", "lines 5, 7-9", "第 5, 7-9 行"; of many ranges the first ones.
std::string LineRanges(std::vector<std::int32_t> lines, Language language) {
  constexpr int kMost = 100;
  std::sort(lines.begin(), lines.end());
  lines.erase(std::unique(lines.begin(), lines.end()), lines.end());
  if (lines.size() == 1) return LineText(lines.front(), language);
  std::string text = Words{"lines ", "第 "}.In(language);
  int ranges = 0;
  for (std::size_t i = 0; i < lines.size();) {
    std::size_t end = i + 1;
    while (end < lines.size() && lines[end] == lines[end - 1] + 1) ++end;
    if (ranges++ == kMost) {
      const std::string rest = std::to_string(lines.size() - i);
      text += Words{" and ", " 行，另有 "}.In(language) + rest;
      return text + Words{" more", " 行"}.In(language);
    }
    text += (i == 0 ? "" : ", ") + std::to_string(lines[i]);
    if (end > i + 1) text += '-' + std::to_string(lines[end - 1]);
    i = end;
  }
  return text + kAfterLine.In(language);
}

void AppendLines(std::string& out, const ImportedBook& imported, Language language) {
  for (const LineNote& note : imported.book.notes) {
    out += "  " + LineText(note.line, language) + ": ";
    out += RoleText(note.role, language);
    if (note.why != BRENU_NOTHING) {
      out += " (";
      out += IdOf(note.why);
      out += ')';
    }
    out += '\n';
  }
}

void AppendStep(std::string& out, const LogEntry& entry, const PointNames& names,
                Language language) {
  const StepText& step = kSteps[static_cast<std::size_t>(entry.step)];
  AppendPadded(out, "  " + LineText(entry.line, language), 13);
  AppendPadded(out, Line(names[entry.station], names[entry.target]), 16);
  const Words set = {"set ", "测回 "};
  AppendPadded(out, entry.set == 0 ? "" : set.In(language) + std::to_string(entry.set), 7);
  AppendPadded(out, step.name.In(language), 30);
  AppendPadded(out, ValueText(entry.raw, step.isAngle), 12);
  AppendPadded(out, CorrectionText(entry.correction, step.isAngle), 12);
  out += ValueText(entry.result, step.isAngle) + '\n';
}

void AppendSpread(std::string& out, const SurveyReduction& survey, Language language) {
  out += Words{"\nPrecision\n", "\n精度\n"}.In(language);
  const auto append = [&](const Words& what, const std::string& value, const char* unit) {
    out += std::string("  ") + what.In(language) + value + unit + '\n';
  };
  if (const auto error = survey.SetSpread().DirectionError()) {
    append({"standard error of a direction in one set: ", "一测回方向中误差："},
           Fixed(*error * kRho, 2), "\"");
  }
  if (const auto error = survey.SetSpread().DistanceError()) {
    append({"standard error of a distance in one set: ", "一测回距离中误差："},
           Fixed(*error * 1e3, 2), " mm");
  }
  const APriori errors = survey.APrioriErrors();
  append({"proposed: directions ", "建议取：方向 "}, Fixed(errors.direction, 2), "\"");
  append({"proposed: distances ", "建议取：距离 "},
         Fixed(errors.distance * 1e3, 2) + " mm + " + Fixed(errors.distanceRatio * 1e6, 1), " ppm");
}

}  // namespace

std::string BookSummary(const ImportedBook& imported, const PointNames& names, Language language) {
  const FieldBook& book = imported.book;
  std::array<std::vector<std::int32_t>, std::size(kRoles)> lines;
  for (const LineNote& note : book.notes) {
    lines[static_cast<std::size_t>(note.role)].push_back(note.line);
  }
  std::string text =
      Printable(imported.name) + ": " + NameOf(book.format) + ", " +
      Counted(static_cast<std::size_t>(book.lineCount), language, {"line", "行"}, "lines");
  std::string separator = "; ";
  for (std::size_t role = 0; role < lines.size(); ++role) {
    if (lines[role].empty()) continue;
    text += separator + kRoles[role].In(language) + ' ' + std::to_string(lines[role].size());
    separator = ", ";
  }
  text += '\n';
  for (const Setup& setup : book.setups) {
    if (setup.sights.empty()) continue;
    text += "  " + Printable(names[setup.station]) + ": " +
            Counted(setup.sights.size(), language, {"sight", "次照准"}, "sights") + '\n';
  }
  for (const LineRole role : {LineRole::kOrientation, LineRole::kResult, LineRole::kCode,
                              LineRole::kNote, LineRole::kTransfer, LineRole::kLeftOut}) {
    const auto& those = lines[static_cast<std::size_t>(role)];
    if (those.empty()) continue;
    text += std::string(Words{"  not used, ", "  未采用，"}.In(language)) +
            RoleText(role, language) + ": " + LineRanges(those, language) + '\n';
  }
  return text;
}

std::string ImportLog(const FieldImport& import, Language language) {
  std::string out;
  for (const ImportedBook& book : import.Books()) {
    out += BookSummary(book, import.Names(), language);
    AppendLines(out, book, language);
    for (const Sentence& sentence : GroupedSentences(book.book.findings, language)) {
      out += "  " + sentence.text + '\n';
    }
    out += '\n';
  }
  out += Words{"Reduction: raw value, correction, result\n", "归算：原始值、改正数、结果\n"}.In(
      language);
  std::int32_t book = 0;
  for (const LogEntry& entry : import.Log()) {
    if (entry.book != book) out += Words{"  -- next file\n", "  -- 下一文件\n"}.In(language);
    book = entry.book;
    AppendStep(out, entry, import.Names(), language);
  }
  AppendSpread(out, import.Reduction(), language);
  return out;
}

std::vector<Sentence> GroupedSentences(const Findings& findings, Language language) {
  struct Group {
    Severity severity;
    std::string text;
    std::vector<std::int32_t> lines;
  };
  std::vector<Group> groups;
  std::unordered_map<std::string, std::size_t> places;
  for (Finding finding : findings) {
    const std::int32_t line = std::exchange(finding.line, 0);
    const std::string text = SentenceOf(finding, language);
    const auto [place, isNew] = places.try_emplace(text, groups.size());
    if (isNew) groups.push_back({finding.severity, text, {}});
    if (line > 0) groups[place->second].lines.push_back(line);
  }
  std::vector<Sentence> sentences;
  for (const Group& group : groups) {
    std::string where;
    if (!group.lines.empty()) {
      where = LineRanges(group.lines, language) + Words{": ", "："}.In(language);
    }
    sentences.push_back({group.severity, where + group.text});
  }
  return sentences;
}

}  // namespace brenu
