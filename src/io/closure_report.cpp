#include "io/closure_report.h"

#include <string>

#include "core/text_number.h"
#include "io/gbk_labels.h"
#include "io/replace_file.h"

namespace brenu {

namespace {

void Append(std::string& out, const char* name, double value, int decimals, const char* unit) {
  out += name;
  AppendFixed(out, value, decimals);
  out += unit;
}

void AppendRecord(std::string& out, const CloseError& r) {
  out += label::kRoute;
  out += r.route;  // always terminated
  out += '\n';
  Append(out, label::kHeightMisclosure, r.heightMisclosure, 3, "(mm)");
  Append(out, label::kLimit, r.heightLimit, 3, "(mm)\n");
  Append(out, label::kAngleMisclosure, r.angleMisclosure, 2, "(s)");
  Append(out, label::kLimit, r.angleLimit, 2, "(s)\n");
  Append(out, label::kLengthMisclosure, r.lengthMisclosure, 4, "(m)\n");
  Append(out, label::kRouteLength, r.routeLength, 4, "(m)");
  Append(out, label::kLengthLimit, r.lengthLimit, 4, "(m)");
  out += label::kRelativePrecision;
  AppendInt(out, r.relativePrecision);
  out += '\n';
  out.append(53, '-');
  out += '\n';
}

}  // namespace

Replaced WriteClosureReport(const std::vector<CloseError>& records, const FilePath& path) {
  const ThreadTeam team;
  return ReplaceFile(path, [&](const TextSink& sink) {
    PassRows(records.size(), sink, [&](std::string& out, std::size_t begin, std::size_t end) {
      for (std::size_t k = begin; k < end; ++k) AppendRecord(out, records[k]);
    });
  });
}

}  // namespace brenu
