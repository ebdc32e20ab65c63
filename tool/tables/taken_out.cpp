#include "tables/taken_out.h"

#include "review/residuals.h"
#include "review/text.h"
#include "tables/text_table.h"

namespace brenu::tool {

std::string TakenOutText(const AdjustmentContext& context, const std::vector<Network>& networks,
                         const std::vector<Observation>& observations) {
  TextTable table("lllrl");
  table.AddRow({"Station", "Target", "Kind", "Residual"});
  int count = 0;
  for (const Network network : networks) {
    for (const ObservationKind& kind : KindsOf(context, network)) {
      for (const Observation& o : observations) {
        const auto result = kind.result(context, o);
        if (!result || !result->takenOut) continue;
        ++count;
        table.AddRow({Printable(o.station), Printable(o.target), kind.singular,
                      Fixed(result->residual * kind.scale, 2), kind.unit});
      }
    }
  }
  if (count == 0) return "Data snooping took no observation out\n";
  return "Taken out by data snooping: " + std::to_string(count) + "\n" + table.Text();
}

}  // namespace brenu::tool
