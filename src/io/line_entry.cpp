#include "io/line_entry.h"

#include <algorithm>
#include <string>
#include <utility>

#include "core/text_number.h"
#include "io/text_line.h"

namespace brenu {

namespace {

// The decimal commas of a line make whole numbers of what should be one number each.
// Two fields stand before the numbers.
bool AreDecimalCommas(const std::vector<std::string_view>& pieces) {
  return std::all_of(pieces.begin() + 2, pieces.end(), [](std::string_view piece) {
    return piece.find_first_not_of("+-0123456789 ") == piece.npos;
  });
}

}  // namespace

std::string Joined(const std::vector<std::string_view>& texts) {
  std::string all;
  for (const std::string_view text : texts) all += (all.empty() ? "" : ", ") + std::string(text);
  return all;
}

Fault LineEntry::Enter(const Grammar& grammar, Section section, std::string_view line) {
  if (section == Section::kParameters) return EnterParam(grammar, line);
  return section == Section::kPoints ? EnterPoint(grammar, line) : EnterObs(grammar, line);
}

Fault LineEntry::EnterParam(const Grammar& grammar, std::string_view line) {
  const Pieces pieces = Split(line, ':');
  if (!grammar.isProject && pieces.size() != 2) return Error(BRENU_PARAMETER_FORM);
  const ParamKey* key = pieces.empty() ? nullptr : grammar.FindKey(pieces[0]);
  if (key == nullptr) {
    std::vector<std::string_view> known;
    for (const ParamKey& one : grammar.keys) known.push_back(one.key);
    m_doubts.Add(BRENU_PARAMETER_UNKNOWN, line, {Joined(known)});
  } else if (pieces.size() < 2) {
    m_doubts.Add(BRENU_PARAMETER_WITHOUT_VALUE, line, {std::string(key->key)});
  } else {
    m_doubts.Number({"parameter", FieldKind::kNumber, ""}, pieces[1]);
    SetParam(m_param, *key, pieces[1]);
  }
  return std::nullopt;
}

Fault LineEntry::CheckPieces(const Pieces& pieces, const LineRule& rule, Code wrong) {
  const bool tooMany = pieces.size() > rule.fields.size();
  if (tooMany && AreDecimalCommas(pieces)) {
    if (rule.most != 0) return Error(BRENU_DECIMAL_COMMAS);
    m_doubts.Add(BRENU_DECIMAL_COMMAS, Joined(pieces));
  }
  if (pieces.size() < rule.fewest || (rule.most != 0 && tooMany)) return Error(wrong);
  return std::nullopt;
}

double LineEntry::Value(const Field& field, std::string_view piece) {
  return piece.empty() ? ParseDouble(field.whenEmpty) : m_doubts.Number(field, piece);
}

Fault LineEntry::EnterPoint(const Grammar& grammar, std::string_view line) {
  const LineRule& rule = grammar.points;
  Pieces pieces = Split(line, ',');
  const Code wrong = grammar.isProject ? BRENU_POINT_FIELDS : BRENU_STATION_FIELDS;
  if (Fault fault = CheckPieces(pieces, rule, wrong)) return fault;
  pieces.resize(rule.fields.size());

  const std::string_view name = UpToNul(pieces[0].empty() ? rule.fields[0].whenEmpty : pieces[0]);
  if (name.size() > kMaxNameLength) return Error(BRENU_NAME_TOO_LONG);
  PointData point{};
  std::copy(name.begin(), name.end(), point.name);
  point.type = ParseInt(pieces[1]);
  for (std::size_t i = 1; i < pieces.size(); ++i) {
    const double value = Value(rule.fields[i], pieces[i]);
    if (rule.fields[i].ofPoint != nullptr) point.*rule.fields[i].ofPoint = value;
  }
  m_doubts.CheckPoint(point, pieces[1], !pieces[2].empty() && !pieces[3].empty(),
                      !pieces[4].empty());
  Outcome added = m_store.AddPoint(m_nextPoint++, point);
  if (added.ok) return std::nullopt;
  return std::move(added.findings.front());
}

Fault LineEntry::EnterObs(const Grammar& grammar, std::string_view line) {
  const LineRule& rule = grammar.observations;
  Pieces pieces = Split(line, ',');
  const Code wrong = grammar.isProject ? BRENU_OBSERVATION_FIELDS : BRENU_SHORT_OBSERVATION_FIELDS;
  if (Fault fault = CheckPieces(pieces, rule, wrong)) return fault;
  pieces.resize(rule.fields.size());

  ObsData obs{};
  obs.azimuth = kAbsentAngle;
  for (std::size_t i = 2; i < pieces.size(); ++i) {
    obs.*rule.fields[i].ofObs = Value(rule.fields[i], pieces[i]);
  }
  const auto nameIn = [&](std::size_t i) {
    return UpToNul(pieces[i].empty() ? rule.fields[i].whenEmpty : pieces[i]);
  };
  const std::string_view station = nameIn(0);
  const std::string_view target = nameIn(1);
  // Lines of the other format must give a last value: there 0 is the usual way to give none.
  if (grammar.isProject) {
    m_doubts.CheckZero(BRENU_DISTANCE_ZERO, station, target, pieces[3]);
    m_doubts.CheckZero(BRENU_HEIGHT_DIFFERENCE_ZERO, station, target, pieces[4]);
  }
  const std::int32_t index = m_store.IndexOfName(station);
  if (index < 0) return Error(BRENU_STATION_UNKNOWN, {std::string(station)});
  Outcome added = m_store.AddObs(index, target, obs);
  if (added.ok) return std::nullopt;
  return std::move(added.findings.front());
}

}  // namespace brenu
