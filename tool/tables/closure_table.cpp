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

const char* Verdict(const CloseError& record) {
  if (!Fails(record)) return "passes";
  if (!IsTraverse(record)) return "FAILS";
  if (record.mark) return "FAILS: length";
  return LengthFails(record) ? "FAILS: angles, length" : "FAILS: angles";
}

// The field of the record cuts long routes.
std::string RouteOf(const CloseError& record) {
  const std::string route = record.route;
  return Printable(route) + (route.size() + 1 == sizeof(record.route) ? "..." : "");
}

void AddLevelling(TextTable& table, const CloseError& r) {
  table.AddRow({Fixed(r.heightMisclosure, 2), Fixed(r.heightLimit, 2),
                Fixed(r.routeLength / 1000.0, 3), Verdict(r), RouteOf(r)});
}

void AddTraverse(TextTable& table, const CloseError& r) {
  const bool checksAngles = r.angleLimit != 0.0;
  table.AddRow({checksAngles ? Fixed(r.angleMisclosure, 1) : "-",
                checksAngles ? Fixed(r.angleLimit, 1) : "-", Fixed(r.lengthMisclosure, 4),
                Fixed(r.lengthLimit, 4), Ratio(r.relativePrecision), Fixed(r.routeLength, 3),
                Verdict(r), RouteOf(r)});
}

std::string Heading(const char* title, int count, int failed) {
  return std::string(title) + ": " + std::to_string(count - failed) + " pass, " +
         std::to_string(failed) + " fail\n";
}

}  // namespace

ClosureTable MakeClosureTable(const AdjustmentContext& context, bool failedOnly) {
  TextTable levelling("rrrll");
  TextTable traverses("rrrrrrll");
  levelling.AddRow({"Misclosure (mm)", "Limit (mm)", "Length (km)", "Result", "Route"});
  traverses.AddRow({"Angles (\")", "Limit (\")", "Length (m)", "Limit (m)", "Ratio", "Sides (m)",
                    "Result", "Route"});
  int counts[2] = {};  // levelling, traverses
  int failed[2] = {};
  for (const CloseError& record : context.closeErrors) {
    const bool isTraverse = IsTraverse(record);
    ++counts[isTraverse ? 1 : 0];
    if (Fails(record)) ++failed[isTraverse ? 1 : 0];
    if (failedOnly && !Fails(record)) continue;
    if (isTraverse) {
      AddTraverse(traverses, record);
    } else {
      AddLevelling(levelling, record);
    }
  }
  const auto rows = [&](int kind, const TextTable& table) {
    return failedOnly && failed[kind] == 0 ? "" : table.Text();
  };
  ClosureTable result{"", counts[0] + counts[1], failed[0] + failed[1]};
  if (counts[0] > 0) {
    result.text += Heading("Levelling lines and loops", counts[0], failed[0]) + rows(0, levelling);
  }
  if (counts[1] > 0) {
    if (!result.text.empty()) result.text += '\n';
    result.text += Heading("Traverses", counts[1], failed[1]) + rows(1, traverses);
  }
  return result;
}

}  // namespace brenu::tool
