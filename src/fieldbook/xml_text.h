// Values out of XML, with the lines where they stand.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <pugixml.hpp>
#include <string_view>
#include <vector>

#include "fieldbook/book_builder.h"

namespace brenu {

// A text of XML and what could be parsed of it.
class XmlText {
 public:
  // Says so in `book` when the text breaks off or is no XML; what stands before stays usable.
  XmlText(std::string_view text, BookBuilder& book);

  pugi::xml_node Root() const { return m_document.document_element(); }
  // Counted from 1.
  std::int32_t LineOf(const pugi::xml_node& node) const { return LineAt(node.offset_debug()); }
  bool IsDamaged() const { return m_isDamaged; }
  std::int32_t LastLine() const { return m_lastLine; }

 private:
  std::int32_t LineAt(std::ptrdiff_t offset) const;

  pugi::xml_document m_document;
  bool m_isDamaged = false;
  std::int32_t m_lastLine = 0;
  std::vector<std::ptrdiff_t> m_lineEnds;  // as places in the text as UTF-8
};

// Without the blanks around it; empty when there is no such element or attribute.
std::string_view TextOf(const pugi::xml_node& node, const char* child);
std::string_view AttributeOf(const pugi::xml_node& node, const char* name);

// Absent for an empty text; one that is no number is told of under the name `what`.
std::optional<double> XmlNumber(BookBuilder& book, std::string_view text, const char* what);

}  // namespace brenu
