#include "report/closure_rows.h"

#include <cmath>

#include "review/encoding.h"

namespace brenu {

namespace {

constexpr double kMillimetre = 0.001;

// The field of the record cuts long routes.
std::string RouteOf(const CloseError& record) {
  const std::string route = record.route;
  return ToUtf8(route) + (route.size() + 1 == sizeof(record.route) ? "..." : "");
}

ClosureRow RowOf(const CloseError& r) {
  ClosureRow row{};
  row.route = RouteOf(r);
  row.length = r.routeLength;
  // Only traverses have a limit of their linear misclosure.
  if (r.lengthLimit == 0.0) {
    row.kind = ClosureRow::Kind::kLevelling;
    row.misclosure = r.heightMisclosure * kMillimetre;
    row.limit = r.heightLimit * kMillimetre;
    row.angleMisclosure = row.angleLimit = std::nan("");
    row.passed = r.mark;
    return row;
  }
  row.kind = ClosureRow::Kind::kTraverse;
  row.misclosure = r.lengthMisclosure;
  row.limit = r.lengthLimit;
  const bool checksAngles = r.angleLimit != 0.0;
  row.angleMisclosure = checksAngles ? r.angleMisclosure : std::nan("");
  row.angleLimit = checksAngles ? r.angleLimit : std::nan("");
  row.relative = r.relativePrecision;
  row.passed = r.mark && r.lengthMisclosure <= r.lengthLimit;
  return row;
}

}  // namespace

std::vector<ClosureRow> ClosureRows(const AdjustmentContext& context) {
  std::vector<ClosureRow> rows;
  rows.reserve(context.closeErrors.size());
  for (const CloseError& record : context.closeErrors) rows.push_back(RowOf(record));
  return rows;
}

}  // namespace brenu
