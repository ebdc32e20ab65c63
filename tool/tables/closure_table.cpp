#include "tables/closure_table.h"

#include "report/text_table.h"
#include "review/text.h"

namespace brenu::tool {

namespace {

// Only traverses have a limit of their linear misclosure.
bool IsTraverse(const CloseError& record) { return record.lengthLimit != 0.0; }

bool LengthFails(const CloseError& record) {
  return IsTraverse(record) && record.lengthMisclosure > record.lengthLimit;
}

bool Fails(const CloseError& record) { return !record.mark || LengthFails(record); }

Words Verdict(const CloseError& record) {
  if (!Fails(record)) return {"passes", "合格"};
  if (!IsTraverse(record)) return {"FAILS", "超限"};
  if (record.mark) return {"FAILS: length", "超限：长度"};
  if (LengthFails(record)) return {"FAILS: angles, length", "超限：角度、长度"};
  return {"FAILS: angles", "超限：角度"};
}

// The field of the record cuts long routes.
std::string RouteOf(const CloseError& record) {
  const std::string route = record.route;
  return Printable(route) + (route.size() + 1 == sizeof(record.route) ? "..." : "");
}

void AddLevelling(TextTable& table, const CloseError& r, Language language) {
  table.AddRow({Fixed(r.heightMisclosure, 2), Fixed(r.heightLimit, 2),
                Fixed(r.routeLength / 1000.0, 3), Verdict(r).In(language), RouteOf(r)});
}

void AddTraverse(TextTable& table, const CloseError& r, Language language) {
  const bool checksAngles = r.angleLimit != 0.0;
  table.AddRow({checksAngles ? Fixed(r.angleMisclosure, 1) : "-",
                checksAngles ? Fixed(r.angleLimit, 1) : "-", Fixed(r.lengthMisclosure, 4),
                Fixed(r.lengthLimit, 4), Ratio(r.relativePrecision), Fixed(r.routeLength, 3),
                Verdict(r).In(language), RouteOf(r)});
}

std::string Heading(const Words& title, int count, int failed, Language language) {
  return title.In(language) + std::string(Words{": ", "："}.In(language)) +
         std::to_string(count - failed) + Words{" pass, ", " 条合格，"}.In(language) +
         std::to_string(failed) + Words{" fail\n", " 条超限\n"}.In(language);
}

}  // namespace

ClosureTable MakeClosureTable(const AdjustmentContext& context, bool failedOnly,
                              Language language) {
  TextTable levelling("rrrll");
  TextTable traverses("rrrrrrll");
  levelling.AddRow(HeadingsIn(language, {{"Misclosure (mm)", "闭合差 (mm)"},
                                         {"Limit (mm)", "限差 (mm)"},
                                         {"Length (km)", "长度 (km)"},
                                         {"Result", "结论"},
                                         {"Route", "路线"}}));
  traverses.AddRow(HeadingsIn(language, {{"Angles (\")", "角度 (″)"},
                                         {"Limit (\")", "限差 (″)"},
                                         {"Length (m)", "长度 (m)"},
                                         {"Limit (m)", "限差 (m)"},
                                         {"Ratio", "相对闭合差"},
                                         {"Sides (m)", "边长和 (m)"},
                                         {"Result", "结论"},
                                         {"Route", "路线"}}));
  int counts[2] = {};  // levelling, traverses
  int failed[2] = {};
  for (const CloseError& record : context.closeErrors) {
    const bool isTraverse = IsTraverse(record);
    ++counts[isTraverse ? 1 : 0];
    if (Fails(record)) ++failed[isTraverse ? 1 : 0];
    if (failedOnly && !Fails(record)) continue;
    if (isTraverse) {
      AddTraverse(traverses, record, language);
    } else {
      AddLevelling(levelling, record, language);
    }
  }
  const auto rows = [&](int kind, const TextTable& table) {
    return failedOnly && failed[kind] == 0 ? "" : table.Text();
  };
  ClosureTable result{"", counts[0] + counts[1], failed[0] + failed[1]};
  if (counts[0] > 0) {
    result.text +=
        Heading({"Levelling lines and loops", "水准路线和闭合环"}, counts[0], failed[0], language) +
        rows(0, levelling);
  }
  if (counts[1] > 0) {
    if (!result.text.empty()) result.text += '\n';
    result.text +=
        Heading({"Traverses", "导线"}, counts[1], failed[1], language) + rows(1, traverses);
  }
  return result;
}

}  // namespace brenu::tool
