#include "report/closure_grade.h"

#include <cmath>

#include "core/records.h"

namespace brenu {

namespace {

// From the finest on.
constexpr int kLevellingGrades[] = {2, 3, 4, 5};
constexpr int kTraverseGrades[] = {2, 3, 4, 5, 6, 7, 8};
constexpr double kMillimetres = 1000.0;

// The first for which the misclosure keeps within the limit.
template <typename Grades, typename LimitOf>
double FinestGrade(const Grades& grades, double misclosure, LimitOf limitOf) {
  for (const int grade : grades) {
    if (misclosure <= limitOf(grade)) return grade;
  }
  return 0.0;
}

}  // namespace

std::vector<ClosureFault> BeyondLimit(const ClosureRow& row, const AdjParam& param) {
  std::vector<ClosureFault> faults;
  const auto add = [&](Code code, double misclosure, double limit, int grade, double met) {
    faults.push_back(
        {Warning(code, {row.route}, {misclosure, limit, static_cast<double>(grade), met}),
         misclosure / limit});
  };
  const double misclosure = std::fabs(row.misclosure);
  if (row.kind == ClosureRow::Kind::kLevelling) {
    const double root = std::sqrt(row.length / 1000.0);
    const double met = FinestGrade(kLevellingGrades, misclosure * kMillimetres, [root](int grade) {
      return LevellingLimitOfGrade(grade) * root;
    });
    add(BRENU_CLOSURE_OF_HEIGHTS, misclosure * kMillimetres, row.limit * kMillimetres, param.Lvl1,
        met);
    return faults;
  }
  const double angle = std::fabs(row.angleMisclosure);
  if (angle > row.angleLimit) {
    const double root = row.angleLimit / param.Lvl2Limit;
    const double met = FinestGrade(kTraverseGrades, angle,
                                   [root](int grade) { return AngleLimitOfGrade(grade) * root; });
    add(BRENU_CLOSURE_OF_ANGLES, angle, row.angleLimit, param.Lvl2, met);
  }
  if (misclosure > row.limit) {
    const double met = FinestGrade(kTraverseGrades, misclosure, [&](int grade) {
      return row.length / RelativeLimitOfGrade(grade);
    });
    add(BRENU_CLOSURE_OF_SIDES, misclosure * kMillimetres, row.limit * kMillimetres, param.Lvl2,
        met);
  }
  return faults;
}

}  // namespace brenu
