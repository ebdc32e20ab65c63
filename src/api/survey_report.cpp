// The C interface of reports.
#include <string>

#include "api/barrier.h"
#include "brenu/survey.h"
#include "report/dxf_sketch.h"
#include "report/html_page.h"
#include "report/json.h"
#include "report/make_report.h"
#include "report/make_sketch.h"
#include "report/svg_sketch.h"
#include "report/text_report.h"

namespace {

void Render(const brenu::Report& report, std::int32_t form, brenu::Language language,
            const brenu::TextSink& sink) {
  switch (form) {
    case BRENU_REPORT_JSON:
      return brenu::WriteJson(report, sink);
    case BRENU_REPORT_HTML:
      return brenu::WriteHtmlPage(report, language, sink);
    case BRENU_REPORT_SVG:
      return sink(brenu::Svg(brenu::ReportSketch(report, language).Drawing()));
    case BRENU_REPORT_DXF:
      return sink(brenu::Dxf(brenu::ReportSketch(report, language).Drawing()));
    default:
      return brenu::WriteTextReport(report, language, sink);
  }
}

}  // namespace

extern "C" {

const char* brenu_report(AdjustmentContext* context, std::int32_t form, std::int32_t language,
                         const char* title) {
  return brenu::Guarded<const char*>(
      nullptr,
      [&]() -> const char* {
        if (form < BRENU_REPORT_JSON || form > BRENU_REPORT_TEXT) return nullptr;
        const brenu::Report report =
            brenu::MakeReport(*context, title == nullptr ? "" : title, context->findings);
        const auto words =
            language == BRENU_CHINESE ? brenu::Language::kChinese : brenu::Language::kEnglish;
        context->reportText = brenu::WholeText(
            [&](const brenu::TextSink& sink) { Render(report, form, words, sink); });
        return context->reportText.c_str();
      },
      context);
}

}  // extern "C"
