#include "report/command_line.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <iostream>
#include <memory>
#include <new>
#include <optional>

#include "report/check.h"
#include "report/files.h"
#include "report/json.h"
#include "report/map_file.h"
#include "report/mask.h"
#include "report/output.h"
#include "report/report.h"
#include "report/unified_diff.h"
#include "report/unmask.h"

namespace reader {
namespace {

constexpr int succeeded = 0;
constexpr int found = 1;
constexpr int failed = 2;

std::unique_ptr<Report> readReport(const std::string& name) {
  try {
    return std::make_unique<Report>(bytesOf(name));
  } catch (const NoReport& error) {
    throw Failure(name + ": " + error.what());
  }
}

int check(const std::string& name, std::ostream& out) {
  const auto report = readReport(name);
  return writeFindings(*report, out) ? found : succeeded;
}

int json(const std::string& name, std::ostream& out) {
  const auto report = readReport(name);
  writeJson(*report, out);
  return succeeded;
}

int diff(const std::string& nameBefore, const std::string& nameAfter, std::ostream& out) {
  const auto before = readReport(nameBefore);
  const auto after = readReport(nameAfter);
  const bool differ = writeDifference({nameBefore, *before}, {nameAfter, *after}, out);
  return differ ? found : succeeded;
}

// The map is written first: a report whose pseudonyms are lost cannot be told from the next.
int mask(const std::string& name, const std::optional<std::string>& mapName, std::ostream& out) {
  const auto report = readReport(name);
  std::optional<MapFile> map;
  if (mapName) map.emplace(*mapName);
  Pseudonyms pseudonyms(report->bytes(), map ? map->pseudonyms() : std::deque<Pseudonym>());
  const MaskedParts parts(*report);
  collectValues(parts, pseudonyms);
  if (map) map->replace(pseudonyms.all());
  writeMasked(parts, pseudonyms, out);
  return succeeded;
}

int unmask(const std::string& name, const std::string& mapName, std::ostream& out) {
  const auto map = readMap(mapName);
  writeUnmasked(bytesOf(name), map->all(), out);
  return succeeded;
}

// The words of the command line, and the command that they ask for.
class Commands {
 public:
  Commands() {
    app_.allow_windows_style_options(false);
    app_.require_subcommand(1);
    app_.set_version_flag("--version", "qbreport " PROGRAM_VERSION);
    app_.footer(
        "REPORT is a report of the diagnostics, \"-\" standard input.\n"
        "Exit status: 0 nothing found or all done, 1 findings or differences, 2 a failure.");
    addCheck();
    addJson();
    addDiff();
    addMask();
    addUnmask();
  }

  /// Raises CLI::ParseError and Failure.
  int run(std::vector<std::string> arguments) {
    if (!arguments.empty()) requireCommand(arguments.front());
    std::ranges::reverse(arguments);
    app_.parse(std::move(arguments));
    Output output(output_, inputs());
    const int status = runTo(output.stream());
    output.finish();
    return status;
  }

  /// Raises Failure.
  int explain(const CLI::ParseError& error) {
    if (app_.exit(error, std::cout, std::cerr) != 0) return failed;
    flushStandardOutput();
    return succeeded;
  }

 private:
  // To the parser a misspelt command is one argument too many.
  void requireCommand(const std::string& word) const {
    std::string names;
    for (const CLI::App* const command : app_.get_subcommands({})) {
      if (command->get_name() == word) return;
      names.append(names.empty() ? "" : ", ").append(command->get_name());
    }
    if (!word.starts_with('-')) throw Failure(word + " is no command: there are " + names);
  }

  std::vector<std::string> inputs() const {
    std::vector<std::string> names = {first_};
    if (!second_.empty()) names.push_back(second_);
    if (map_) names.push_back(*map_);
    return names;
  }

  int runTo(std::ostream& out) {
    if (command_ == "check") return check(first_, out);
    if (command_ == "json") return json(first_, out);
    if (command_ == "diff") return diff(first_, second_, out);
    if (command_ == "unmask") return unmask(first_, *map_, out);
    return mask(first_, map_, out);
  }

  CLI::App* add(const std::string& name, const std::string& description) {
    CLI::App* const command = app_.add_subcommand(name, description);
    command->callback([this, name] { command_ = name; });
    command
        ->add_option("-o,--output", output_,
                     "Writes to this file, which is replaced once all is written")
        ->type_name("FILE");
    return command;
  }

  void addCheck() {
    CLI::App* const command = add("check", "Shows what a report tells of failures, one a line");
    command->add_option("REPORT", first_, "The report")->required();
    command->footer(
        "A line has a code, the section, the number of the line, the line, and what it means, with "
        "tabs between them.\nExit status: 0 without findings, 1 with findings.");
  }

  void addJson() {
    add("json", "Writes a report as JSON")->add_option("REPORT", first_, "The report")->required();
  }

  void addDiff() {
    CLI::App* const command =
        add("diff", "Shows how two reports differ, but for what every run changes");
    command->add_option("OLD", first_, "The earlier report")->required();
    command->add_option("NEW", second_, "The later report")->required();
    command->footer("Exit status: 0 if they are the same, 1 if they differ.");
  }

  void addMask() {
    CLI::App* const command =
        add("mask", "Writes a report with pseudonyms in place of names, paths and texts");
    command->add_option("REPORT", first_, "The report")->required();
    command
        ->add_option("--map", map_,
                     "Keeps the pseudonyms in this file, so that a value has the same one in other "
                     "reports; it tells who is who, and is for nobody else")
        ->type_name("FILE");
    command->footer(
        "In the texts of failures and messages, values are replaced that the report tells "
        "elsewhere "
        "too. What else\nthe words of the Notes library may tell stays: read the result before you "
        "hand it on.");
  }

  void addUnmask() {
    CLI::App* const command =
        add("unmask", "Writes a masked report, or a text about it, with the values again");
    command->add_option("TEXT", first_, "The text, or \"-\" for standard input")
        ->type_name("")
        ->required();
    command->add_option("--map", map_, "The file in which mask kept the pseudonyms")
        ->type_name("FILE")
        ->required();
    command->footer(
        "A pseudonym counts where no letter or digit stands beside it; one that the map does not "
        "have stays.\nIn a report the values have their bytes, in any other text they are UTF-8.");
  }

  CLI::App app_{"Reads the reports of the Quellbright Domino Module diagnostics.", "qbreport"};
  std::string command_;
  std::string first_;
  std::string second_;
  std::optional<std::string> map_;
  std::optional<std::string> output_;
};

int fail(const std::string& reason) {
  std::cerr << "qbreport: " << reason << '\n';
  return failed;
}

int runOrExplain(const std::vector<std::string>& arguments) {
  Commands commands;
  try {
    return commands.run(arguments);
  } catch (const CLI::ParseError& error) {
    return commands.explain(error);
  }
}

}  // namespace

int runCommand(const std::vector<std::string>& arguments) {
  try {
    return runOrExplain(arguments);
  } catch (const Failure& failure) {
    return fail(failure.what());
  } catch (const std::bad_alloc&) {
    return fail("the report is too large for the memory");
  }
}

}  // namespace reader
