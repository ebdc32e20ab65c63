#include "fieldbook/read_book.h"

#include "fieldbook/book_builder.h"
#include "fieldbook/book_format.h"
#include "fieldbook/readers.h"

namespace brenu {

Outcome ReadBook(std::string_view text, const ReadOptions& options, PointNames& names,
                 FieldBook& book) {
  book = {};
  book.format = FormatOfBook(text);
  BookBuilder builder(book, names);
  switch (book.format) {
    case BookFormat::kGsi8:
    case BookFormat::kGsi16:
      ReadGsi(text, options.stationCodes, builder);
      break;
    case BookFormat::kSdr:
      ReadSdr(text, builder);
      break;
    case BookFormat::kM5:
      ReadM5(text, builder);
      break;
#ifdef BRENU_HAS_XML
    case BookFormat::kJobXml:
      ReadJobXml(text, builder);
      break;
    case BookFormat::kGkf:
      ReadGkf(text, builder);
      break;
#else
    case BookFormat::kJobXml:
    case BookFormat::kGkf:
      return Error(BRENU_FIELD_BOOK_WITHOUT_XML);
#endif
    default:
      return Error(WhyNoBook(text));
  }
  builder.Finish();
  return {};
}

}  // namespace brenu
