// Imports the text of field books and tells what became of it in one line.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "fieldbook/import.h"
#include "io/project_file.h"
#include "review/import_text.h"
#include "review/sentence.h"

namespace brenu::testing {

struct Imported {
  std::string points, observations;  // lines of a project file
  std::string heights;               // those of a job of heights beside the plane
  std::string findings;              // "code@line names; ..."
  ImportedJob job;
  bool ok = false;
};

inline std::string Section(const ImportedJob& job, const std::string& header) {
  const std::string text = ProjectText(job.param, job.store);
  const std::size_t start = text.find(header) + header.size() + 1;
  return text.substr(start, text.find("\n\n", start) - start);
}

inline std::string Told(const Findings& findings) {
  std::string text;
  for (const Finding& f : findings) {
    if (!text.empty()) text += "; ";
    text += IdOf(f.code);
    if (f.line > 0) text += '@' + std::to_string(f.line);
    for (const std::string& name : f.names) text += ' ' + name;
  }
  return text;
}

// Lines of the book that have no fate.
inline std::vector<std::int32_t> Forgotten(const FieldBook& book, const std::string& text) {
  std::vector<std::int32_t> lines;
  std::int32_t number = 0;
  for (std::size_t start = 0; start < text.size();) {
    const std::size_t end = std::min(text.find('\n', start), text.size());
    ++number;
    const bool isBlank = text.find_first_not_of(" \r", start) >= end;
    const bool isKnown = std::any_of(book.notes.begin(), book.notes.end(),
                                     [&](const LineNote& note) { return note.line == number; });
    if (!isBlank && !isKnown) lines.push_back(number);
    start = end + 1;
  }
  return lines;
}

inline Imported Import(const std::vector<std::string>& texts, const ImportOptions& options = {},
                       const std::string& control = {}) {
  Imported result;
  FieldImport import(options);
  Findings whole;
  if (!control.empty()) whole = import.AddControl(control).findings;
  for (const std::string& text : texts) {
    Outcome read = import.AddBook("book", text, true);
    if (!read.ok) {
      result.findings = Told(read.findings);
      return result;
    }
    const FieldBook& book = import.Books().back().book;
    const bool isXml = book.format == BookFormat::kJobXml || book.format == BookFormat::kGkf;
    EXPECT_TRUE(isXml || Forgotten(book, text).empty());
    result.findings += Told(book.findings);
  }
  ImportedJob heights;
  import.Finish(result.job, heights, whole);
  EXPECT_FALSE(ImportLog(import, Language::kEnglish).empty());
  std::erase_if(whole, [](const Finding& f) { return f.code == BRENU_IMPORT_WITHOUT_CONTROL; });
  if (!whole.empty()) result.findings += (result.findings.empty() ? "" : "; ") + Told(whole);
  result.points = Section(result.job, "[PT]");
  result.observations = Section(result.job, "[OBS]");
  if (!heights.store.Points().empty()) result.heights = Section(heights, "[OBS]");
  result.ok = true;
  return result;
}

}  // namespace brenu::testing
