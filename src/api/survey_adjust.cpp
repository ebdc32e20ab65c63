// The C interface of computations by either set of rules and of what belongs to them.
#include <cmath>
#include <cstddef>
#include <limits>
#include <optional>
#include <vector>

#include "api/barrier.h"
#include "api/text_field.h"
#include "brenu/survey.h"
#include "job/result_lookup.h"
#include "review/computation.h"

namespace {

using Context = AdjustmentContext;
using brenu::Guarded;
using brenu::Outcome;
using brenu::OutlierTest;
using brenu::Reported;

static_assert(sizeof(brenu_options) == 32);
static_assert(sizeof(brenu_observation) == 264 && sizeof(brenu_taken_out) == 288);
static_assert(sizeof(brenu_control_fit) == 48);

Outcome Refused(const char* field, double value) {
  return brenu::Error(BRENU_OPTION_REFUSED, {field}, {value});
}

// What is not 0 must lie between 0 and the limit.
bool IsOption(double value, double limit) { return value >= 0.0 && value < limit; }

Outcome CheckOptions(const brenu_options& o) {
  const bool isTextbook = o.rules == BRENU_TEXTBOOK;
  if (!isTextbook && o.rules != BRENU_CLASSIC) return Refused("rules", o.rules);
  const std::int32_t lastTest = isTextbook ? BRENU_TAU_TEST : BRENU_W_TEST;
  if (o.test < BRENU_NO_TEST || o.test > lastTest) return Refused("test", o.test);
  if (!IsOption(o.alpha, 1.0)) return Refused("alpha", o.alpha);
  const bool isCritical = IsOption(o.critical, HUGE_VAL) && (isTextbook || o.critical == 0.0);
  if (!isCritical) return Refused("critical", o.critical);
  if (!IsOption(o.levelSigma, HUGE_VAL)) return Refused("levelSigma", o.levelSigma);
  return {};
}

brenu::Rules RulesOf(const brenu_options& o) {
  brenu::Rules rules;
  if (o.rules == BRENU_TEXTBOOK) rules.set = brenu::RuleSet::kTextbook;
  if (o.levelSigma > 0.0) rules.levelSigma = o.levelSigma;
  return rules;
}

std::optional<OutlierTest> TestOf(const brenu_options& o) {
  if (o.test == BRENU_NO_TEST) return std::nullopt;
  constexpr double kUsual = 0.001;
  OutlierTest test(o.alpha > 0.0 ? o.alpha : kUsual);
  if (o.test == BRENU_TAU_TEST) test.kind = OutlierTest::Kind::kPope;
  test.critical = o.critical;
  return test;
}

// Computes by the rules of the options, when they can be.
template <typename Compute>
bool ComputeBy(Context* context, const brenu_options* options, Compute compute) {
  const auto run = [&] {
    if (Outcome checked = CheckOptions(*options); !checked.ok) return checked;
    context->rules = RulesOf(*options);
    return compute();
  };
  return Reported(context, run, options);
}

brenu_observation Named(const brenu::NetworkLayout& net, brenu::SightNo sight, std::int32_t kind) {
  brenu_observation o{};
  brenu::Put(net.Names().NameAt(net.At(sight).station), o.station);
  brenu::Put(net.Names().NameAt(net.At(sight).target), o.target);
  o.kind = kind;
  return o;
}

brenu_observation Named(const brenu::LevelAdjustment& level, brenu::SightNo sight) {
  return Named(level.Net().layout, sight, BRENU_HEIGHT_DIFFERENCE);
}

brenu_observation Named(const brenu::PlaneAdjustment& plane, const brenu::PlaneObsId& id) {
  constexpr std::int32_t kKinds[] = {BRENU_DIRECTION, BRENU_DISTANCE, BRENU_AZIMUTH};
  return Named(plane.Net().layout, id.sight, kKinds[static_cast<std::size_t>(id.kind)]);
}

std::size_t TakenOutOfHeights(const Context& context) {
  return context.adjusted.heights ? context.level.results.AllTakenOut().size() : 0;
}
std::size_t TakenOutOfPlane(const Context& context) {
  return context.adjusted.plane ? context.plane.results.AllTakenOut().size() : 0;
}

// What `use` makes of a network and the record of that index in it; false when there is none.
template <typename Use>
bool UseTakenOut(const Context& context, std::int32_t index, Use use) {
  if (index < 0) return false;
  auto number = static_cast<std::size_t>(index);
  const std::size_t heights = TakenOutOfHeights(context);
  if (number < heights) {
    return use(context.level.results, context.level.results.AllTakenOut()[number]);
  }
  number -= heights;
  if (number >= TakenOutOfPlane(context)) return false;
  return use(context.plane.results, context.plane.results.AllTakenOut()[number]);
}

brenu_observation ObservationOf(const brenu::LevelAdjustment& level,
                                const brenu::LevelTakenOut& record) {
  return Named(level, record.sight);
}
brenu_observation ObservationOf(const brenu::PlaneAdjustment& plane,
                                const brenu::TakenOut& record) {
  return Named(plane, record.id);
}

}  // namespace

extern "C" {

bool brenu_adjust(Context* context, const brenu_options* options) {
  return ComputeBy(context, options,
                   [&] { return brenu::ComputeChecked(*context, TestOf(*options)); });
}

bool brenu_approximate(Context* context, const brenu_options* options) {
  return ComputeBy(context, options, [&] { return brenu::ComputeApproximations(*context); });
}

bool brenu_compute_closures(Context* context, const brenu_options* options) {
  return ComputeBy(context, options, [&] { return brenu::ComputeClosures(*context); });
}

int32_t brenu_taken_out_count(Context* context) {
  if (context == nullptr) return 0;
  return static_cast<int32_t>(TakenOutOfHeights(*context) + TakenOutOfPlane(*context));
}

bool brenu_get_taken_out(Context* context, int32_t index, brenu_taken_out* out) {
  const auto copy = [=](const auto& results, const auto& record) {
    const auto alternatives = static_cast<int32_t>(record.alternatives.size());
    *out = {ObservationOf(results, record), alternatives, 0, record.testValue, record.error};
    return true;
  };
  return Guarded(
      false, [=] { return UseTakenOut(*context, index, copy); }, context, out);
}

bool brenu_get_alternative(Context* context, int32_t index, int32_t number,
                           brenu_observation* out) {
  const auto copy = [=](const auto& results, const auto& record) {
    const auto place = static_cast<std::size_t>(number);
    if (number < 0 || place >= record.alternatives.size()) return false;
    *out = Named(results, record.alternatives[place]);
    return true;
  };
  return Guarded(
      false, [=] { return UseTakenOut(*context, index, copy); }, context, out);
}

int32_t brenu_untested_count(Context* context, int32_t network) {
  if (context == nullptr) return 0;
  std::size_t count = 0;
  if (network == BRENU_HEIGHTS && context->adjusted.heights) {
    count = context->level.results.UntestedCount();
  }
  if (network == BRENU_PLANE && context->adjusted.plane) {
    count = context->plane.results.UntestedCount();
  }
  return static_cast<int32_t>(count);
}

bool brenu_get_control_fit(Context* context, int32_t index, brenu_control_fit* out) {
  return Guarded(
      false,
      [=] {
        const auto plane = brenu::PlaneControlFit(*context, index);
        const auto height = brenu::HeightControlFit(*context, index);
        if (!plane && !height) return false;
        constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
        *out = {kNone, kNone, kNone, kNone, kNone, kNone};
        if (plane) {
          out->x = plane->ownDx;
          out->y = plane->ownDy;
          out->wx = plane->wx;
          out->wy = plane->wy;
        }
        if (height) {
          out->h = height->correction;
          out->wh = height->w;
        }
        return true;
      },
      context, out);
}

}  // extern "C"
