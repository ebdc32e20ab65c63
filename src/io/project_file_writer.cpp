#include <string>

#include "core/text_number.h"
#include "io/grammar.h"
#include "io/project_file.h"

namespace brenu {

namespace {

void AppendType(std::string& out, std::int32_t type) {
  if (type == 0 || type == 1) out += '0';
  AppendInt(out, type);
}

// An absent value is an empty field.
void AppendField(std::string& out, double value, double absent, bool fixed) {
  out += ',';
  if (value == absent) return;
  if (fixed) {
    AppendFixed(out, value, 6);
  } else {
    AppendGeneral(out, value);
  }
}

}  // namespace

std::string ProjectText(const AdjParam& param, const Store& store) {
  const Grammar& grammar = ProjectGrammar();
  std::string out;
  const auto begin = [&](Section section) {
    if (!out.empty()) out += '\n';
    out += grammar.HeaderOf(section);
    out += '\n';
  };
  begin(Section::kParameters);
  AppendParameters(out, ProjectGrammar(), param);

  begin(Section::kPoints);
  for (const auto& [index, point] : store.Points()) {
    out += NameOf(point);
    out += ',';
    AppendType(out, point.type);
    for (const Field& field : grammar.points.fields.subspan(2)) {
      AppendField(out, point.*field.ofPoint, 0.0, true);
    }
    out += '\n';
  }

  begin(Section::kObservations);
  // Only the first point line brings in the six decimals that the rest of the file keeps.
  const bool fixed = !store.Points().empty();
  for (const auto& [station, targets] : store.Observations()) {
    for (const auto& [target, obs] : targets) {
      out += station;
      out += ',';
      out += target;
      for (const Field& field : grammar.observations.fields.subspan(2)) {
        AppendField(out, obs.*field.ofObs, ParseDouble(field.whenEmpty), fixed);
      }
      out += '\n';
    }
  }
  return out;
}

Replaced WriteProjectFile(const AdjParam& param, const Store& store, const FilePath& path) {
  return ReplaceFile(path, ProjectText(param, store));
}

}  // namespace brenu
