// One reader a format; docs/fieldbooks.md has the formats in words.  Each fills a field book from
// the text of a file of its format, whatever else the file holds, and never fails.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "fieldbook/book_builder.h"

namespace brenu {

// `stationCodes`: codes (word 41) that begin a setup.
void ReadGsi(std::string_view text, const std::vector<std::string>& stationCodes,
             BookBuilder& book);
void ReadSdr(std::string_view text, BookBuilder& book);
void ReadM5(std::string_view text, BookBuilder& book);
void ReadJobXml(std::string_view text, BookBuilder& book);
void ReadGkf(std::string_view text, BookBuilder& book);

}  // namespace brenu
