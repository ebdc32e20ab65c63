#include "reduce_command.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>

#include "core/angles.h"
#include "core/text_number.h"
#include "reductions.h"
#include "review/text.h"

namespace brenu::tool {

namespace {

struct Quantity {
  std::string name, unit;
};

// Of "NAME:unit NAME:unit".
std::vector<Quantity> Quantities(std::string_view text) {
  std::vector<Quantity> all;
  while (!text.empty()) {
    const std::string_view one = text.substr(0, text.find(' '));
    text.remove_prefix(std::min(one.size() + 1, text.size()));
    const std::size_t colon = one.find(':');
    all.push_back({std::string(one.substr(0, colon)), std::string(one.substr(colon + 1))});
  }
  return all;
}

std::string Help(const Reduction& reduction) {
  std::string text = std::string(reduction.formula) + "\n\nArguments:";
  for (const auto& [name, unit] : Quantities(reduction.arguments))
    text += ' ' + name + " (" + unit + ')';
  text += "\nResult:";
  for (const auto& [name, unit] : Quantities(reduction.results))
    text += ' ' + name + " (" + unit + ')';
  return text +
         "\n\nAngles are dms, packed dd.mmss (30.15205 is 30 degrees 15' 20.5\"), or radians with "
         "an "
         "r behind: 0.5281r.";
}

// Whether the text is a value of that unit; an angle becomes radians.
bool ReadValue(std::string_view text, const std::string& unit, double& value) {
  const bool isRadians = unit == "dms" && text.ends_with('r');
  if (isRadians) text.remove_suffix(1);
  const ParsedDouble number = ParseWholeDouble(text);
  value = unit == "dms" && !isRadians ? DmsToRad(number.value) : number.value;
  return number.isWhole && !text.empty();
}

void Print(const Quantity& quantity, double value) {
  std::string text;
  AppendFixed(text, quantity.unit == "dms" ? RadToDms(FullCircle(value)) : value,
              quantity.unit == "dms" ? 8 : 9);
  std::printf("%s %s %s\n", quantity.name.c_str(), text.c_str(), quantity.unit.c_str());
}

}  // namespace

CLI::App& AddReduce(CLI::App& app, ReduceOptions& options) {
  CLI::App& command = *app.add_subcommand(
      "reduce",
      "Computes one of sixteen reductions of single observations: brenu reduce NAME ARGS, "
      "brenu reduce NAME --help for its formula and units.");
  command.require_subcommand(1);
  for (const Reduction& reduction : Reductions()) {
    CLI::App& one =
        *command.add_subcommand(std::string(reduction.name), std::string(reduction.what));
    one.ignore_case();
    one.footer(Help(reduction));
    one.prefix_command();  // negative numbers are no options
    one.callback([&options, &one] {
      options.name = one.get_name();
      options.arguments = one.remaining();
    });
  }
  return command;
}

ExitStatus RunReduce(const ReduceOptions& options) {
  const auto all = Reductions();
  const auto reduction = std::find_if(all.begin(), all.end(),
                                      [&](const Reduction& r) { return r.name == options.name; });
  const std::vector<Quantity> wanted = Quantities(reduction->arguments);
  std::vector<double> values(wanted.size());
  if (options.arguments.size() != wanted.size()) {
    SayText(About(options.name), Severity::kError,
            "it takes " + std::to_string(wanted.size()) + " values, not " +
                std::to_string(options.arguments.size()) + "; see brenu reduce " + options.name +
                " --help");
    return kFileOrUsage;
  }
  for (std::size_t i = 0; i < wanted.size(); ++i) {
    if (ReadValue(options.arguments[i], wanted[i].unit, values[i])) continue;
    SayText(About(options.name), Severity::kError,
            Quoted(options.arguments[i]) + " is no value for " + wanted[i].name +
                "; give a number (" + wanted[i].unit + ')');
    return kFileOrUsage;
  }
  const std::vector<double> results = reduction->compute(values);
  const std::vector<Quantity> named = Quantities(reduction->results);
  for (std::size_t i = 0; i < results.size(); ++i) Print(named[i], results[i]);
  return kDone;
}

}  // namespace brenu::tool
