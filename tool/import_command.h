#pragma once

#include <string>
#include <vector>

#include "command.h"
#include "review/field_import.h"

namespace CLI {
class App;
}

namespace brenu::tool {

struct FieldImportOptions {
  FieldFiles files;
  std::string project;  // where the job goes; empty: to the standard output
  std::string log;      // where the steps of the reduction go; empty for none
  ImportOptions import;
  Language language = LanguageOfEnvironment();  // of all that people read
};

// Adds the command and its options, which are set when it is given.
CLI::App& AddImport(CLI::App& app, FieldImportOptions& options);

// "survey.txt" becomes "survey-heights.txt".
std::string HeightsPath(const std::string& path);

// Findings about a file on the standard error, those of equal words in one sentence.
void SayGrouped(const std::string& file, const Findings& findings, Language language);

// Writes the text, or says why not: false.
bool WriteText(const std::string& path, const std::string& text, Language language);

// brenu import FILE...: reads field books, reduces them and writes a project file; a second one for
// heights beside a plane survey.
ExitStatus RunImport(const FieldImportOptions& options);

}  // namespace brenu::tool
