#include "io/text_kind.h"

namespace brenu {

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

}  // namespace brenu
