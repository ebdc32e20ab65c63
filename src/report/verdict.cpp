#include "report/verdict.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "core/distributions.h"
#include "report/closure_grade.h"
#include "report/taken_out_routes.h"
#include "review/text.h"

namespace brenu {

namespace {

// The classic limit of a test value, which chance exceeds once in a thousand.
constexpr double kRare = 3.29;

double ValueOf(ObsKind kind) { return static_cast<double>(kind); }

// Whether neither the global test nor any single one contradicts the network.
bool IsInOrder(const NetworkReport& network) {
  return network.test && network.test->statistic <= network.test->upper &&
         std::none_of(network.observations.begin(), network.observations.end(),
                      [](const ObservationRow& row) { return row.exceeds; });
}

// Whether m0 is too large, but neither a residual nor the misfit of a control point stands out by
// its a-posteriori error: then the a-priori errors are what is wrong.
bool IsScaleWrong(const NetworkReport& network) {
  if (!network.test || network.test->statistic <= network.test->upper) return false;
  if (!std::isfinite(network.criticalTau)) return false;
  const double critical = network.criticalTau * network.m0 / network.m0Apriori;
  return std::none_of(network.observations.begin(), network.observations.end(),
                      [&](const ObservationRow& row) {
                        return row.exceeds && std::fabs(row.w) > critical;
                      }) &&
         std::none_of(network.control.begin(), network.control.end(),
                      [&](const ControlRow& row) { return std::fabs(row.w) > critical; });
}

// By their test values, the largest first.
template <typename Row>
void SortByTest(std::vector<const Row*>& rows) {
  std::sort(rows.begin(), rows.end(),
            [](const Row* a, const Row* b) { return std::fabs(a->w) > std::fabs(b->w); });
}

class Judgement {
 public:
  explicit Judgement(const Report& report) : m_report(report) {}
  Verdict Make();

 private:
  void TakeFindings();
  void JudgeNetwork(const NetworkReport& network, double number);
  void JudgeMisfits(const NetworkReport& network);
  void JudgeControl(const NetworkReport& network, double largestW);
  void JudgeVariance(const NetworkReport& network, double number);
  void JudgeGroups(const NetworkReport& network);
  template <typename PointRow>
  void JudgePoints(const NetworkReport& network, const std::vector<PointRow>& points);
  void JudgeClosures();
  std::string Next() const;
  std::string NextOptions() const;
  bool HasReason(Code code) const;

  const Report& m_report;
  Verdict m_verdict;
};

bool Judgement::HasReason(Code code) const {
  return std::any_of(m_verdict.reasons.begin(), m_verdict.reasons.end(),
                     [code](const Finding& f) { return f.code == code; });
}

// What the computation said about its completeness.  Where it failed the doubts about the data come
// first, as they may be why.
void Judgement::TakeFindings() {
  const bool hasFailed = Has(m_report.findings, Severity::kError);
  for (const Finding& f : m_report.findings) {
    const bool isReason =
        f.severity == Severity::kWarning &&
        (hasFailed || f.code == BRENU_POINT_LEFT_OUT || f.code == BRENU_GROUP_LEFT_OUT ||
         f.code == BRENU_POINTS_UNDETERMINED || f.code == BRENU_HEIGHTS_LEFT_OUT ||
         f.code == BRENU_CONTROL_DOES_NOT_FIT || f.code == BRENU_AXES_EXCHANGED);
    if (isReason) m_verdict.reasons.push_back(f);
  }
  for (const Finding& f : m_report.findings) {
    if (f.severity == Severity::kError) m_verdict.reasons.push_back(f);
  }
}

// A control coordinate that explains more than any observation does.
void Judgement::JudgeControl(const NetworkReport& network, double largestW) {
  const ControlRow* worst = nullptr;
  for (const ControlRow& row : network.control) {
    const double least = worst == nullptr ? std::max(largestW, network.criticalW) : worst->w;
    if (std::fabs(row.w) > std::fabs(least)) worst = &row;
  }
  if (worst == nullptr || HasReason(BRENU_CONTROL_DOES_NOT_FIT)) return;
  m_verdict.reasons.push_back(Warning(BRENU_CONTROL_DOES_NOT_FIT, {worst->name, worst->coordinate},
                                      {worst->correction, std::fabs(worst->w)}));
}

void Judgement::JudgeMisfits(const NetworkReport& network) {
  std::vector<const ObservationRow*> suspects;
  std::vector<const ObservationRow*> rare;
  std::size_t removed = 0;
  for (const ObservationRow& row : network.observations) {
    removed += row.removed ? 1 : 0;
    if (row.exceeds) {
      suspects.push_back(&row);
    } else if (!row.removed && row.checked == Checked::kWell && std::fabs(row.w) > kRare) {
      rare.push_back(&row);
    }
  }
  SortByTest(suspects);
  SortByTest(rare);
  const bool isScaleWrong = IsScaleWrong(network);
  if (!isScaleWrong) {
    JudgeControl(network, suspects.empty() ? 0.0 : std::fabs(suspects.front()->w));
  }
  if (!suspects.empty() && !isScaleWrong) {
    const ObservationRow& worst = *suspects.front();
    m_verdict.reasons.push_back(
        Warning(BRENU_OBSERVATION_SUSPECT, {worst.from, worst.to},
                {ValueOf(worst.kind), std::fabs(worst.w), network.criticalW, worst.error}));
    if (suspects.size() > 1) {
      m_verdict.reasons.push_back(
          Warning(BRENU_MORE_SUSPECTS, {}, {static_cast<double>(suspects.size() - 1)}));
    }
  }
  if (!rare.empty()) {
    const ObservationRow& worst = *rare.front();
    m_verdict.remarks.push_back(
        Note(BRENU_LARGE_BY_CHANCE, {worst.from, worst.to},
             {ValueOf(worst.kind), std::fabs(worst.w), static_cast<double>(rare.size() - 1)}));
  }
  if (removed > 0) {
    m_verdict.remarks.push_back(Note(BRENU_OBSERVATIONS_OUT, {}, {static_cast<double>(removed)}));
  }
}

void Judgement::JudgeVariance(const NetworkReport& network, double number) {
  if (network.newPoints == 0) return;
  if (!network.test) {
    m_verdict.reasons.push_back(Warning(BRENU_NOTHING_REDUNDANT, {}, {number}));
    return;
  }
  const VarianceTest& test = *network.test;
  const double ratio = std::sqrt(test.statistic / network.redundancy);
  if (test.statistic > test.upper) {
    m_verdict.reasons.push_back(
        Warning(BRENU_M0_TOO_LARGE, {}, {number, test.statistic, test.upper, ratio}));
  } else if (test.statistic < test.lower) {
    m_verdict.remarks.push_back(
        Note(BRENU_M0_SMALL, {}, {number, test.statistic, test.lower, ratio}));
  }
}

// Which a-priori error is wrong, where one is and nothing else explains it.
void Judgement::JudgeGroups(const NetworkReport& network) {
  constexpr double kLeastRedundancy = 5.0;
  constexpr double kTail = 0.005;  // several groups, two sides
  if (network.groups.size() < 2 || HasReason(BRENU_OBSERVATION_SUSPECT)) return;
  for (const GroupRow& group : network.groups) {
    if (group.redundancy < kLeastRedundancy) continue;
    if (group.pvv <= ChiSquareQuantile(1.0 - kTail, group.redundancy) &&
        group.pvv >= ChiSquareQuantile(kTail, group.redundancy)) {
      continue;
    }
    m_verdict.remarks.push_back(
        Note(BRENU_GROUP_VARIANCE, {}, {ValueOf(group.kind), std::sqrt(group.varianceFactor)}));
  }
}

// New points by the best check that any of their observations has.
template <typename PointRow>
void Judgement::JudgePoints(const NetworkReport& network, const std::vector<PointRow>& points) {
  if (network.redundancy <= 0) return;  // said already
  std::unordered_map<std::string_view, Checked> best(points.size());
  for (const ObservationRow& row : network.observations) {
    if (row.removed) continue;
    for (const std::string* name : {&row.from, &row.to}) {
      const auto [at, isNew] = best.emplace(*name, row.checked);
      if (!isNew) at->second = std::min(at->second, row.checked);
    }
  }
  Finding notChecked = Warning(BRENU_POINTS_NOT_CHECKED);
  Finding weak = Warning(BRENU_POINTS_WEAK);
  for (const PointRow& point : points) {
    const auto at = best.find(point.name);
    if (point.control || at == best.end() || at->second == Checked::kWell) continue;
    (at->second == Checked::kNot ? notChecked : weak).names.push_back(point.name);
  }
  for (Finding* finding : {&notChecked, &weak}) {
    if (!finding->names.empty()) m_verdict.reasons.push_back(std::move(*finding));
  }
}

void Judgement::JudgeNetwork(const NetworkReport& network, double number) {
  JudgeMisfits(network);
  JudgeVariance(network, number);
  JudgeGroups(network);
}

// The worst of each kind stands for all.
void Judgement::JudgeClosures() {
  std::map<Code, std::pair<Finding, double>> worst;  // with the share of the limit
  std::size_t failed = 0;
  std::size_t explained = 0;
  const TakenOutRoutes takenOut(m_report);
  for (const ClosureRow& row : m_report.closures) {
    if (row.passed) continue;
    if (takenOut.Touch(row)) {
      ++explained;
      continue;
    }
    ++failed;
    for (auto& [finding, share] : BeyondLimit(row, m_report.param)) {
      auto& kept = worst[finding.code];
      if (share > kept.second) kept = {std::move(finding), share};
    }
  }
  for (auto& [code, kept] : worst) {
    const bool isInOrder = code == BRENU_CLOSURE_OF_HEIGHTS
                               ? m_report.heights && IsInOrder(*m_report.heights)
                               : m_report.plane && IsInOrder(*m_report.plane);
    kept.first.values.push_back(isInOrder ? 1.0 : 0.0);
    m_verdict.reasons.push_back(std::move(kept.first));
  }
  if (failed > worst.size()) {
    m_verdict.reasons.push_back(
        Warning(BRENU_MORE_CLOSURES, {}, {static_cast<double>(failed - worst.size())}));
  }
  if (explained > 0) {
    m_verdict.remarks.push_back(
        Note(BRENU_CLOSURES_EXPLAINED, {}, {static_cast<double>(explained)}));
  }
}

std::string Judgement::Next() const {
  const std::string command = "brenu " + NextOptions() + ' ';
  const bool needsQuotes = m_report.file.find(' ') != std::string::npos;
  return command + (needsQuotes ? '"' + m_report.file + '"' : m_report.file);
}

std::string Judgement::NextOptions() const {
  if (m_verdict.reasons.empty()) return "adjust --html report.html";
  switch (m_verdict.reasons.front().code) {
    case BRENU_M0_TOO_LARGE:
      if (m_report.heights && IsScaleWrong(*m_report.heights)) {
        return "adjust --level-sigma " + Fixed(m_report.heights->m0 * 1000.0, 1);
      }
      return m_report.plane && IsScaleWrong(*m_report.plane) ? "check" : "adjust --snoop 0.001";
    case BRENU_OBSERVATION_SUSPECT:
      return "adjust --snoop 0.001";
    case BRENU_CLOSURE_OF_HEIGHTS:
    case BRENU_CLOSURE_OF_ANGLES:
    case BRENU_CLOSURE_OF_SIDES:
      return "closures --failed";
    default:
      return "check";
  }
}

Verdict Judgement::Make() {
  TakeFindings();
  if (m_report.heights) JudgeNetwork(*m_report.heights, 0.0);
  if (m_report.plane) JudgeNetwork(*m_report.plane, 1.0);
  if (m_report.heights) JudgePoints(*m_report.heights, m_report.heights->points);
  if (m_report.plane) JudgePoints(*m_report.plane, m_report.plane->points);
  JudgeClosures();
  m_verdict.passed = m_verdict.reasons.empty();
  m_verdict.next = Next();
  return std::move(m_verdict);
}

}  // namespace

Verdict Judge(const Report& report) { return Judgement(report).Make(); }

}  // namespace brenu
