#include "fieldbook/book_format.h"

#include <string>

#include "fieldbook/book_lines.h"

namespace brenu {

namespace {

constexpr std::size_t kHeadSize = 1 << 12;

bool IsLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }

// The first line that is not blank.
std::string_view FirstLine(std::string_view text) {
  BookLines lines(text);
  while (lines.Next()) {
    if (!lines.IsBlank()) return Trimmed(lines.Text());
  }
  return {};
}

// 11 or 41, four of digits, points and blanks, a sign; with an asterisk in front for 16 characters.
bool IsGsi(std::string_view line) {
  constexpr std::size_t kHead = 7;
  if (line.starts_with('*')) line.remove_prefix(1);
  if (line.size() < kHead || !(line.starts_with("11") || line.starts_with("41"))) return false;
  return line.substr(2, 4).find_first_not_of("0123456789. ") == line.npos &&
         (line[6] == '+' || line[6] == '-');
}

bool IsSdr(std::string_view line) {
  return line.size() >= 7 && line.starts_with("00") && IsLetter(line[2]) && IsLetter(line[3]) &&
         line.substr(4, 3) == "SDR";
}

// The root element behind declaration, comments and document type.  Text of 16-bit characters has a
// NUL beside each that counts here.
std::string RootOf(std::string_view text) {
  std::string head(text.substr(0, kHeadSize));
  std::erase(head, '\0');
  std::size_t open = head.find('<');
  while (open != std::string::npos && open + 1 < head.size() && !IsLetter(head[open + 1])) {
    const bool isComment = head.compare(open, 4, "<!--") == 0;
    open = head.find('<', isComment ? head.find("-->", open) : open + 1);
  }
  if (open == std::string::npos) return {};
  return head.substr(open + 1, head.find_first_of(" \t\r\n/>", open) - open - 1);
}

}  // namespace

const char* NameOf(BookFormat format) {
  switch (format) {
    case BookFormat::kGsi8:
      return "Leica GSI-8";
    case BookFormat::kGsi16:
      return "Leica GSI-16";
    case BookFormat::kSdr:
      return "Sokkia SDR";
    case BookFormat::kJobXml:
      return "Trimble JobXML";
    case BookFormat::kM5:
      return "Zeiss/Trimble M5";
    case BookFormat::kGkf:
      return "gama-local XML";
    default:
      return "unknown";
  }
}

BookFormat FormatOfBook(std::string_view text) {
  const std::string_view line = FirstLine(text.substr(0, kHeadSize));
  if (line.starts_with("For M5|") || line.starts_with("For_M5|")) return BookFormat::kM5;
  if (IsSdr(line)) return BookFormat::kSdr;
  if (IsGsi(line)) return line.starts_with('*') ? BookFormat::kGsi16 : BookFormat::kGsi8;
  const bool isWide = text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF");
  if (!isWide && !line.starts_with('<')) return BookFormat::kUnknown;
  const std::string root = RootOf(text);
  if (root == "JOBFile") return BookFormat::kJobXml;
  return root == "gama-local" || root == "gama-xml" ? BookFormat::kGkf : BookFormat::kUnknown;
}

Code WhyNoBook(std::string_view text) {
  const std::string_view line = FirstLine(text.substr(0, kHeadSize));
  const bool isList = line.size() > 3 && IsLetter(line[0]) && IsLetter(line[1]) && line[2] == ',';
  return isList ? BRENU_FIELD_BOOK_COMMA_LIST : BRENU_FIELD_BOOK_UNKNOWN;
}

}  // namespace brenu
