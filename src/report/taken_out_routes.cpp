#include "report/taken_out_routes.h"

#include <string_view>

#include "core/closure_record.h"

namespace brenu {

TakenOutRoutes::TakenOutRoutes(const Report& report) {
  const auto add = [this](const NetworkReport& network) {
    for (const ObservationRow& row : network.observations) {
      if (!row.removed) continue;
      m_pairs.emplace(row.from, row.to);
      m_pairs.emplace(row.to, row.from);
    }
  };
  if (report.heights) add(*report.heights);
  if (report.plane) add(*report.plane);
}

bool TakenOutRoutes::Touch(const ClosureRow& row) const {
  if (m_pairs.empty()) return false;
  constexpr std::string_view kJoint = kRouteJoint;
  std::string last;
  for (std::string_view rest = row.route;;) {
    const std::size_t end = rest.find(kJoint);
    std::string name(rest.substr(0, end));
    if (m_pairs.contains({last, name})) return true;
    if (end == std::string_view::npos) return false;
    last = std::move(name);
    rest.remove_prefix(end + kJoint.size());
  }
}

}  // namespace brenu
