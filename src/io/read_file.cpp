#include "io/read_file.h"

#include <string>
#include <utility>

#include "io/line_entry.h"
#include "io/text_kind.h"
#include "io/text_line.h"

namespace brenu {

namespace {

bool LooksLikeHeader(std::string_view line) {
  const std::size_t start = line.find_first_not_of(" \t");
  return start != std::string_view::npos && line[start] == '[';
}

std::string HeadersOf(const Grammar& grammar) {
  return Joined({grammar.headers.begin(), grammar.headers.end()});
}

bool IsBlank(std::string_view line) { return line.find_first_not_of(" \t") == line.npos; }

class TextReader {
 public:
  // Without grammar the file is read by content.
  TextReader(const Grammar* grammar, AdjParam& param, Store& store)
      : m_grammar(grammar), m_byContent(grammar == nullptr), m_entry(param, store, m_doubts) {}

  Outcome Read(LineReader& file);
  FileKind Kind() const { return m_grammar == nullptr ? FileKind::kUnknown : m_grammar->kind; }

 private:
  Fault ReadLines(LineReader& file);
  Fault ReadLine(std::size_t number, std::string_view text, bool isCut);
  Section HeaderOf(std::string_view text) const;
  void PassOver(std::size_t number, std::string_view line);
  Finding NoSection() const;
  Findings Skipped() const;

  const Grammar* m_grammar;  // null as long as no header has decided
  bool m_byContent;
  Doubts m_doubts;
  LineEntry m_entry;
  Code m_kindOfText = BRENU_NOTHING;
  Section m_section = Section::kNone;
  bool m_hasSection = false;
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
    if (header == Section::kPoints && counts) m_entry.RestartPoints();
    return std::nullopt;
  }
  if (m_section == Section::kNone) {
    PassOver(number, line);
    return std::nullopt;
  }
  if (isCut && !(m_section == Section::kParameters && m_grammar->isProject)) {
    return Error(BRENU_LINE_TOO_LONG);
  }
  return m_entry.Enter(*m_grammar, m_section, line);
}

// Exactly, where not by content: see Grammar.
Section TextReader::HeaderOf(std::string_view text) const {
  if (m_byContent) return m_grammar->SectionOf(WithoutReturn(text));
  if (m_grammar->isProject) {
    return m_section == Section::kNone ? m_grammar->SectionOf(WithoutReturn(text)) : Section::kNone;
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
  header.names = {HeadersOf(ProjectGrammar()) + "; " + HeadersOf(StationGrammar())};
  return header;
}

Findings TextReader::Skipped() const {
  if (!m_hasSection || (m_strayHeader == 0 && m_skippedCount == 0)) return {};
  Finding doubt;
  if (m_strayHeader != 0) {
    doubt = Warning(BRENU_HEADER_UNKNOWN, {HeadersOf(*m_grammar)});
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
