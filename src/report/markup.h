#pragma once

#include <string>
#include <string_view>

namespace brenu {

// Text safe between the tags of XML or HTML and in attributes.  What is no UTF-8, and characters
// that they have no place for, become U+FFFD; lines stay lines.
void AppendEscaped(std::string& out, std::string_view text);

}  // namespace brenu
