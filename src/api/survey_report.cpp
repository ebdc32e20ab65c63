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

std::string Render(const brenu::Report& report, std::int32_t form, brenu::Language language) {
  switch (form) {
    case BRENU_REPORT_JSON:
      return brenu::Json(report);
    case BRENU_REPORT_HTML:
      return brenu::HtmlPage(report, language);
    case BRENU_REPORT_SVG:
      return brenu::Svg(brenu::ReportSketch(report, language).Drawing());
    case BRENU_REPORT_DXF:
      return brenu::Dxf(brenu::ReportSketch(report, language).Drawing());
    default:
      return brenu::TextReport(report, language);
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
        context->reportText = Render(
            report, form,
            language == BRENU_CHINESE ? brenu::Language::kChinese : brenu::Language::kEnglish);
        return context->reportText.c_str();
      },
      context);
}

}  // extern "C"
