// Field books into a job.
#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>

#include "core/finding.h"
#include "fieldbook/job_writer.h"
#include "fieldbook/read_book.h"
#include "fieldbook/survey_reduction.h"

namespace brenu {

struct ImportOptions {
  ReadOptions reading;
  ReductionOptions reduction;
};

// What a field book became.
struct ImportedBook {
  std::string name;  // of its file
  FieldBook book;    // its findings are those of its reduction, too
};

class FieldImport {
 public:
  // The options must outlive it.
  explicit FieldImport(const ImportOptions& options) : m_options(options) {}
  FieldImport(const FieldImport&) = delete;
  FieldImport& operator=(const FieldImport&) = delete;

  // Known points, which count before those of the field books: of a job that was read; of a list
  // (fieldbook/point_list.h), or those entered in a field book.  To be called before AddBook.
  void AddControl(const Store& store);
  Outcome AddControl(std::string_view text);
  // Reads and reduces a field book.  What is doubtful about it is among its findings.
  Outcome AddBook(std::string name, std::string_view text, bool withLog);

  // Fills the jobs with what was read.  Heights share the field of the distance with the plane, as
  // the length of their line: a survey of both becomes two jobs, the heights in the second, unless
  // the lines have the lengths of the distances.
  // `findings` are about the survey as a whole.
  void Finish(ImportedJob& job, ImportedJob& heights, Findings& findings);

  const std::deque<ImportedBook>& Books() const { return m_books; }
  const PointNames& Names() const { return m_names; }
  const ReductionLog& Log() const { return m_log; }
  const SurveyReduction& Reduction() const { return m_survey; }

 private:
  // Of several known places of a point the first counts; other ones are told of in `findings`.
  void EnterPoint(const BookPoint& point, bool isControl, Findings& findings);
  void EnterBookPoints(const FieldBook& book, bool isList, Findings& findings);

  const ImportOptions& m_options;
  PointNames m_names;
  std::deque<ImportedBook> m_books;
  ReductionLog m_log;
  SurveyReduction m_survey{m_names, m_options.reduction};
  KnownPlaces m_places;
};

}  // namespace brenu
