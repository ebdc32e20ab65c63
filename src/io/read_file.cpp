#include "io/read_file.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "core/text_number.h"
#include "io/doubts.h"
#include "io/text_line.h"

namespace brenu {

namespace {

using Pieces = std::vector<std::string_view>;
using Fault = std::optional<Finding>;

// What a file is that has no header of the format wanted.
Code KindOfText(std::string_view head) {
  if (head.empty()) return BRENU_FILE_EMPTY;
  const std::size_t nul = head.find('\0');
  const bool hasMark = head.starts_with("\xFF\xFE") || head.starts_with("\xFE\xFF");
  const bool isWide = nul < 2 && head.find('\0', nul + 2) == nul + 2;
  if (hasMark || isWide) return BRENU_FILE_UTF16;
  if (nul != std::string_view::npos) return BRENU_FILE_BINARY;
  return head.find_first_not_of(" \t\r\n") == std::string_view::npos ? BRENU_FILE_EMPTY
                                                                     : BRENU_FILE_OF_OTHER_KIND;
}

bool LooksLikeHeader(std::string_view line) {
  const std::size_t start = line.find_first_not_of(" \t");
  return start != std::string_view::npos && line[start] == '[';
}

bool IsBlank(std::string_view line) { return line.find_first_not_of(" \t") == line.npos; }

std::string Joined(auto&& texts) {
  std::string all;
  for (const std::string_view text : texts) all += (all.empty() ? "" : ", ") + std::string(text);
  return all;
}

// The decimal commas of a line make whole numbers of what should be one number each.
bool AreDecimalCommas(const Pieces& pieces, std::size_t firstNumber) {
  return std::all_of(pieces.begin() + static_cast<std::ptrdiff_t>(firstNumber), pieces.end(),
                     [](std::string_view piece) {
                       return piece.find_first_not_of("+-0123456789 ") == piece.npos;
                     });
}

class TextReader {
 public:
  // Without grammar the file is read by content.
  TextReader(const Grammar* grammar, AdjParam& param, Store& store)
      : m_grammar(grammar), m_byContent(grammar == nullptr), m_param(param), m_store(store) {}

  Outcome Read(LineReader& file);
  FileKind Kind() const { return m_grammar == nullptr ? FileKind::kUnknown : m_grammar->kind; }

 private:
  Fault ReadLines(LineReader& file);
  Fault ReadLine(std::size_t number, std::string_view text, bool isCut);
  Section HeaderOf(std::string_view text) const;
  void PassOver(std::size_t number, std::string_view line);
  Fault ReadParam(std::string_view line);
  Fault ReadPoint(std::string_view line);
  Fault ReadObs(std::string_view line);
  Fault CheckPieces(const Pieces& pieces, const LineRule& rule, std::size_t firstNumber,
                    Code wrong);
  // The value of a field, or what it is read as when it is empty.
  double Value(const Field& field, std::string_view piece);
  Finding NoSection() const;
  Findings Skipped() const;

  const Grammar* m_grammar;  // null as long as no header has decided
  bool m_byContent;
  AdjParam& m_param;
  Store& m_store;
  Doubts m_doubts;
  Code m_kindOfText = BRENU_NOTHING;
  Section m_section = Section::kNone;
  bool m_hasSection = false;
  std::int32_t m_nextPoint = 0;
  // Outside the sections:
  std::size_t m_firstSkipped = 0;
  std::size_t m_skippedCount = 0;
  std::size_t m_strayHeader = 0;  // first line that looks like a header but is none
  std::string m_strayHeaderText;
  bool m_hasOtherHeader = false;  // of the other format
};

Outcome TextReader::Read(LineReader& file) {
  if (file.OpenFault() != BRENU_NOTHING) return Error(file.OpenFault());
  m_kindOfText = KindOfText(file.Head());
  if (m_byContent && m_kindOfText != BRENU_FILE_OF_OTHER_KIND) return Error(m_kindOfText);
  Fault fault = ReadLines(file);
  Outcome outcome;
  outcome.findings = Skipped();
  for (Finding& doubt : m_doubts.Take()) outcome.findings.push_back(std::move(doubt));
  if (!fault && file.HasFailed()) fault = Error(BRENU_FILE_NOT_READ);
  if (!fault && !m_hasSection) {
    Finding cause = NoSection();
    if (m_byContent) {
      fault = std::move(cause);
    } else {
      cause.severity = Severity::kWarning;
      outcome.findings.push_back(std::move(cause));
    }
  }
  if (fault) outcome += Outcome(std::move(*fault));
  return outcome;
}

Fault TextReader::ReadLines(LineReader& file) {
  std::string text;
  for (std::size_t number = 1; file.Next(text); ++number) {
    std::string_view line = text;
    if (number == 1 && m_byContent && line.starts_with("\xEF\xBB\xBF")) line.remove_prefix(3);
    if (number == 1 && Kind() == FileKind::kStation && line == ProjectGrammar().headers[0]) {
      return Error(BRENU_FILE_IS_PROJECT);
    }
    m_doubts.StartLine(number);
    if (Fault fault = ReadLine(number, line, file.IsCut())) {
      if (fault->line == 0) fault->line = static_cast<std::int32_t>(number);
      fault->excerpt = WithoutReturn(line);
      return fault;
    }
  }
  return std::nullopt;
}

Fault TextReader::ReadLine(std::size_t number, std::string_view text, bool isCut) {
  const std::string_view line = WithoutReturn(text);
  if (m_grammar == nullptr) {
    for (const Grammar* grammar : {&ProjectGrammar(), &StationGrammar()}) {
      if (grammar->SectionOf(line) != Section::kNone) m_grammar = grammar;
    }
  }
  const Section header = m_grammar == nullptr ? Section::kNone : HeaderOf(text);
  if (line.empty() || header != Section::kNone) {
    m_section = header;
    m_hasSection = m_hasSection || header != Section::kNone;
    const bool counts = m_grammar != nullptr && m_grammar->isProject && !m_byContent;
    if (header == Section::kPoints && counts) m_nextPoint = 0;
    return std::nullopt;
  }
  if (m_section == Section::kNone) {
    PassOver(number, line);
    return std::nullopt;
  }
  if (isCut && !(m_section == Section::kParameters && m_grammar->isProject)) {
    return Error(BRENU_LINE_TOO_LONG);
  }
  if (m_section == Section::kParameters) return ReadParam(line);
  return m_section == Section::kPoints ? ReadPoint(line) : ReadObs(line);
}

// Exactly, where not by content: see Grammar.
Section TextReader::HeaderOf(std::string_view text) const {
  if (m_byContent) return m_grammar->SectionOf(WithoutReturn(text));
  if (m_grammar->isProject) {
    return m_section == Section::kNone ? m_grammar->SectionOf(WithoutReturn(text))
                                       : Section::kNone;
  }
  const Section header = m_grammar->SectionOf(text);
  const bool again = m_section == Section::kParameters && header == Section::kParameters;
  return again ? Section::kNone : header;
}

void TextReader::PassOver(std::size_t number, std::string_view line) {
  const bool isProject = ProjectGrammar().SectionOf(line) != Section::kNone;
  const bool isStation = StationGrammar().SectionOf(line) != Section::kNone;
  m_hasOtherHeader = m_hasOtherHeader || isProject || isStation;
  if (m_strayHeader == 0 && LooksLikeHeader(line)) {
    m_strayHeader = number;
    m_strayHeaderText = line;
  }
  if (!m_hasSection || IsBlank(line)) return;  // a preface
  if (m_skippedCount++ == 0) m_firstSkipped = number;
}

Fault TextReader::ReadParam(std::string_view line) {
  const Pieces pieces = Split(line, ':');
  if (!m_grammar->isProject && pieces.size() != 2) return Error(BRENU_PARAMETER_FORM);
  const ParamKey* key = pieces.empty() ? nullptr : m_grammar->FindKey(pieces[0]);
  if (key == nullptr) {
    std::vector<std::string_view> known;
    for (const ParamKey& one : m_grammar->keys) known.push_back(one.key);
    m_doubts.Add(BRENU_PARAMETER_UNKNOWN, line, {Joined(known)});
  } else if (pieces.size() < 2) {
    m_doubts.Add(BRENU_PARAMETER_WITHOUT_VALUE, line, {std::string(key->key)});
  } else {
    m_doubts.Number({"parameter", FieldKind::kNumber, ""}, pieces[1]);
    SetParam(m_param, *key, pieces[1]);
  }
  return std::nullopt;
}

Fault TextReader::CheckPieces(const Pieces& pieces, const LineRule& rule, std::size_t firstNumber,
                              Code wrong) {
  const bool tooMany = pieces.size() > rule.fields.size();
  if (tooMany && AreDecimalCommas(pieces, firstNumber)) {
    if (rule.most != 0) return Error(BRENU_DECIMAL_COMMAS);
    m_doubts.Add(BRENU_DECIMAL_COMMAS, Joined(pieces));
  }
  if (pieces.size() < rule.fewest || (rule.most != 0 && tooMany)) return Error(wrong);
  return std::nullopt;
}

double TextReader::Value(const Field& field, std::string_view piece) {
  return piece.empty() ? ParseDouble(field.whenEmpty) : m_doubts.Number(field, piece);
}

Fault TextReader::ReadPoint(std::string_view line) {
  const LineRule& rule = m_grammar->points;
  Pieces pieces = Split(line, ',');
  const Code wrong = m_grammar->isProject ? BRENU_POINT_FIELDS : BRENU_STATION_FIELDS;
  if (Fault fault = CheckPieces(pieces, rule, 2, wrong)) return fault;
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

Fault TextReader::ReadObs(std::string_view line) {
  const LineRule& rule = m_grammar->observations;
  Pieces pieces = Split(line, ',');
  const Code wrong =
      m_grammar->isProject ? BRENU_OBSERVATION_FIELDS : BRENU_SHORT_OBSERVATION_FIELDS;
  if (Fault fault = CheckPieces(pieces, rule, 2, wrong)) return fault;
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
  if (m_grammar->isProject) {
    m_doubts.CheckZero(BRENU_DISTANCE_ZERO, station, target, pieces[3]);
    m_doubts.CheckZero(BRENU_HEIGHT_DIFFERENCE_ZERO, station, target, pieces[4]);
  }
  const std::int32_t index = m_store.IndexOfName(station);
  if (index < 0) return Error(BRENU_STATION_UNKNOWN, {std::string(station)});
  Outcome added = m_store.AddObs(index, target, obs);
  if (added.ok) return std::nullopt;
  return std::move(added.findings.front());
}

// Why nothing was read.
Finding TextReader::NoSection() const {
  if (m_kindOfText != BRENU_FILE_OF_OTHER_KIND) return Error(m_kindOfText);
  if (m_hasOtherHeader) {
    return Error(Kind() == FileKind::kProject ? BRENU_FILE_IS_STATION : BRENU_FILE_IS_PROJECT);
  }
  if (m_strayHeader == 0) return Error(BRENU_FILE_OF_OTHER_KIND);
  Finding header = Error(BRENU_HEADER_UNKNOWN);
  header.line = static_cast<std::int32_t>(m_strayHeader);
  header.excerpt = m_strayHeaderText;
  header.names = {Joined(ProjectGrammar().headers) + "; " + Joined(StationGrammar().headers)};
  return header;
}

Findings TextReader::Skipped() const {
  if (!m_hasSection || (m_strayHeader == 0 && m_skippedCount == 0)) return {};
  Finding doubt;
  if (m_strayHeader != 0) {
    doubt = Warning(BRENU_HEADER_UNKNOWN, {Joined(m_grammar->headers)});
    doubt.excerpt = m_strayHeaderText;
  } else {
    doubt = Warning(BRENU_LINES_SKIPPED, {}, {static_cast<double>(m_skippedCount - 1)});
  }
  doubt.line = static_cast<std::int32_t>(m_strayHeader != 0 ? m_strayHeader : m_firstSkipped);
  return {std::move(doubt)};
}

}  // namespace

Outcome ReadAs(const Grammar& grammar, AdjParam& param, Store& store, LineReader& file) {
  return TextReader(&grammar, param, store).Read(file);
}

ReadResult ReadByContent(AdjParam& param, Store& store, LineReader& file) {
  TextReader reader(nullptr, param, store);
  Outcome outcome = reader.Read(file);
  return {reader.Kind(), std::move(outcome)};
}

}  // namespace brenu
