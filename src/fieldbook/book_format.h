#pragma once

#include <string_view>

#include "core/finding.h"
#include "fieldbook/field_book.h"

namespace brenu {

// The format of a field book by its beginning, never by the name of the file.  kUnknown for what is
// none.
BookFormat FormatOfBook(std::string_view text);

// Why text is no field book: BRENU_FIELD_BOOK_COMMA_LIST, or BRENU_FIELD_BOOK_UNKNOWN.
Code WhyNoBook(std::string_view text);

}  // namespace brenu
