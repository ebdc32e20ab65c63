#pragma once

#include <functional>
#include <string>

#include "io/text_pieces.h"
#include "job/adjustment_context.h"
#include "progress.h"
#include "review/language.h"

namespace brenu::tool {

enum ExitStatus : int {
  kDone = 0,
  kComputationFailed = 1,  // the network cannot be computed, or does not stand a check
  kFileOrUsage = 2,        // a file or the command line is at fault
};

// How a command ended, and what there is to say about it.
struct Ending {
  ExitStatus status = kDone;
  Findings findings;

  // `status` when the outcome is no success.
  static Ending Of(Outcome outcome, ExitStatus status) {
    return {outcome.ok ? kDone : status, std::move(outcome.findings)};
  }
};

// The language of the environment (LC_ALL, LC_MESSAGES, LANG): Chinese or, for all others, English.
Language LanguageOfEnvironment();

// What is the same for all commands on a file.
struct FileOptions {
  std::string file;                             // UTF-8, as all paths of the program
  bool strict = false;                          // a doubt about a value is an error
  Language language = LanguageOfEnvironment();  // of all that people read
};

// A file to say something about.
inline FileOptions About(std::string file, Language language = LanguageOfEnvironment()) {
  FileOptions options;
  options.file = std::move(file);
  options.language = language;
  return options;
}

// What a command does with a file that has been read: appends to the text for the standard output.
// That is printed whatever the ending.
// `read` is what reading and checking found, which has been said already.
using Work = std::function<Ending(AdjustmentContext& context, const Findings& read,
                                  Progress& progress, std::string& text)>;

// Reads the file into a fresh context, checks the data and does the work; findings go to the
// standard error, one sentence each.
ExitStatus RunOnFile(const FileOptions& options, const Work& work);

// Passes a text on to the standard output; false, and a sentence about it, when it takes no more.
bool Print(const FileOptions& options, const TextSource& text);

// The findings about a file on the standard error, warnings said to be so.
void Say(const FileOptions& options, const Findings& findings);
// One sentence about it.
void SayText(const FileOptions& options, Severity severity, const std::string& text);
void SayWords(const FileOptions& options, const Words& sentence);

}  // namespace brenu::tool
