#pragma once

#include "io/text_pieces.h"
#include "report/report.h"
#include "review/language.h"

namespace brenu {

// The report as one page that needs nothing else: verdict, sketch, tables, statistics.  Complete
// without script; with it tables sort, filter and turn pages, and rows and sketch lead to each
// other.
void WriteHtmlPage(const Report& report, Language language, const TextSink& sink);

// What it shows below its heading, for a page around it that has the style sheet and calls
// enhanceReport of the script on the element.  Findings of a line of the file hold its number in
// the attribute data-source.
void WriteHtmlBody(const Report& report, Language language, const TextSink& sink);

}  // namespace brenu
