#include "report/markup.h"

#include "report/utf8.h"

namespace brenu {

void AppendEscaped(std::string& out, std::string_view text) {
  while (!text.empty()) {
    if (text.front() == '\n') {
      out += '\n';
      text.remove_prefix(1);
      continue;
    }
    const Utf8Character character = FirstCharacter(text);
    if (character.code == '&') {
      out += "&amp;";
    } else if (character.code == '<') {
      out += "&lt;";
    } else if (character.code == '>') {
      out += "&gt;";
    } else if (character.code == '"') {
      out += "&quot;";
    } else if (character.code == kReplacementCharacter) {
      out += "\xef\xbf\xbd";
    } else {
      out += text.substr(0, character.length);
    }
    text.remove_prefix(character.length);
  }
}

}  // namespace brenu
