#include "report/command_line.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <new>
#include <optional>
#include <sstream>

#include "platform/console.h"
#include "platform/terminal.h"
#include "report/check.h"
#include "report/explanation.h"
#include "report/files.h"
#include "report/findings_text.h"
#include "report/json.h"
#include "report/map_file.h"
#include "report/mask.h"
#include "report/report.h"
#include "report/report_files.h"
#include "report/text.h"
#include "report/unified_diff.h"

namespace reader {
namespace {

constexpr int succeeded = 0;
constexpr int found = 1;
constexpr int failed = 2;

bool isSet(const char* variable) {
  const char* const value = std::getenv(variable);
  return value != nullptr && *value != '\0';
}

// A Windows console takes characters, not bytes.
std::optional<Severity> showFindings(const Report& report, Origin origin, std::size_t width) {
  const bool isColoured = !isSet("NO_COLOR") && platform::enableTerminalColours();
  std::stringstream text;
  const auto gravest = writeFindingsText(report, origin, {width, isColoured}, text);
  for (std::string line; std::getline(text, line);) platform::printWideLine(toWide(line));
  return gravest;
}

// A name as a part of one line.
std::string shownName(const std::string& name) {
  std::ostringstream shown;
  writeShown(shown, name);
  return shown.str();
}

int fail(const std::string& reason) {
  std::cerr << "qbreport: " << reason << '\n';
  return failed;
}

struct CheckOptions {
  Origin origin;
  bool isPlain;
  Severity failOn;
};

int check(const ReportFiles& files, const CheckOptions& options) {
  const auto width = options.isPlain ? std::nullopt : platform::terminalWidth();
  std::optional<Severity> gravest;
  const bool areRead = files.forEach(fail, [&](const std::string& name, const Report& report) {
    const std::string shown = files.areNamed() ? shownName(name) : "";
    if (width && files.areNamed()) platform::printWideLine(toWide('\n' + shown + '\n'));
    const auto most = width ? showFindings(report, options.origin, *width)
                            : writeFindings(report, options.origin,
                                            shown + (files.areNamed() ? "\t" : ""), std::cout);
    gravest = std::max(gravest, most);
  });
  if (!areRead) return failed;
  return gravest >= options.failOn ? found : succeeded;
}

int json(const ReportFiles& files, Origin origin) {
  const bool areRead = files.forEach(fail, [&](const std::string& name, const Report& report) {
    writeJson(report, std::cout, origin, files.areNamed() ? toUtf8(name) : "");
  });
  return areRead ? succeeded : failed;
}

int explain(const std::string& name) {
  constexpr std::size_t usualWidth = 100;
  const std::size_t width = platform::terminalWidth().value_or(usualWidth);
  if (name.empty()) {
    writeExplanations(width, std::cout);
    return succeeded;
  }
  const std::optional<Code> code = codeNamed(name);
  if (!code) {
    std::string names;
    for (const Code known : allCodes())
      names.append(names.empty() ? "" : ", ").append(nameOf(known));
    throw Failure("there is no code " + name + "; the codes are " + names);
  }
  writeExplanation(*code, width, std::cout);
  return succeeded;
}

int diff(const std::string& nameBefore, const std::string& nameAfter) {
  const auto before = readReport(nameBefore);
  const auto after = readReport(nameAfter);
  const bool differ = writeDifference({nameBefore, *before}, {nameAfter, *after}, std::cout);
  return differ ? found : succeeded;
}

// The map is written first: a report whose pseudonyms are lost cannot be told from the next.
int mask(const std::string& name, const std::optional<std::string>& mapName) {
  const auto report = readReport(name);
  std::optional<MapFile> map;
  if (mapName) map.emplace(*mapName);
  Pseudonyms pseudonyms(report->bytes(), map ? map->pseudonyms() : std::deque<Pseudonym>());
  const MaskedParts parts(*report);
  collectValues(parts, pseudonyms);
  if (map) map->replace(pseudonyms.all());
  writeMasked(parts, pseudonyms, std::cout);
  return succeeded;
}

Severity severityOf(const std::string& name) {
  if (const auto severity = severityNamed(name)) return *severity;
  throw CLI::ValidationError("--fail-on", name + " is none of error, warning, note");
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
    addExplain();
  }

  /// Raises CLI::ParseError.
  int run(std::vector<std::string> arguments) {
    std::ranges::reverse(arguments);
    app_.parse(std::move(arguments));
    const Origin origin = isOffline_ ? Origin::exports : Origin::server;
    if (command_ == "check") return check(ReportFiles(reports_), {origin, isPlain_, failOn_});
    if (command_ == "json") return json(ReportFiles(reports_), origin);
    if (command_ == "explain") return explain(first_);
    if (command_ == "diff") return diff(first_, second_);
    return mask(first_, map_);
  }

  int tell(const CLI::ParseError& error) {
    return app_.exit(error, std::cout, std::cerr) == 0 ? succeeded : failed;
  }

 private:
  CLI::App* add(const std::string& name, const std::string& description) {
    CLI::App* const command = app_.add_subcommand(name, description);
    command->callback([this, name] { command_ = name; });
    return command;
  }

  void addCheck() {
    CLI::App* const command = add("check", "Shows what reports tell of failures");
    addReports(command);
    addOffline(command);
    command
        ->add_option_function<std::string>(
            "--fail-on", [this](const std::string& name) { failOn_ = severityOf(name); },
            "From which severity on findings make the exit status 1: error, warning, or note, the "
            "default")
        ->type_name("SEVERITY");
    command->add_flag("--plain", isPlain_, "One finding a line, on a terminal too");
    command->footer(
        "On a terminal findings show as text. Elsewhere, and with --plain, each is a line with a "
        "code, the\nsection, the number of the line, the line, what it means, its severity (error, "
        "warning or note), and\nwhat to do, with tabs between them. qbreport explain CODE tells "
        "more.\n"
        "Exit status: 0 without findings, 1 with findings.\n"
        "Example: qbreport check --fail-on error Quellbright-DIAGNOSTIC-20261115050311.log");
  }

  void addJson() {
    CLI::App* const command = add("json", "Writes reports and their findings as JSON");
    addReports(command);
    addOffline(command);
    command->footer(
        "The form is that of report.schema.json, which lies beside the program or in "
        "/usr/share/qbdiagnostics.\n"
        "Example: qbreport json Quellbright-DIAGNOSTIC-20261115050311.log > report.json");
  }

  void addReports(CLI::App* command) {
    command
        ->add_option(
            "REPORT", reports_,
            "The reports; a folder stands for those in it. With several, or a folder, each "
            "line tells which of them it is of")
        ->required();
  }

  void addOffline(CLI::App* command) {
    command->add_flag("--offline", isOffline_,
                      "The report was made from an export: what only the server itself can tell is "
                      "a note");
  }

  void addDiff() {
    CLI::App* const command =
        add("diff", "Shows how two reports differ, but for what every run changes");
    command->add_option("OLD", first_, "The earlier report")->required();
    command->add_option("NEW", second_, "The later report")->required();
    command->footer(
        "Exit status: 0 if they are the same, 1 if they differ.\n"
        "Example: qbreport diff before.log after.log");
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
        "hand it on.\n"
        "Example: qbreport mask --map names.map Quellbright-DIAGNOSTIC-20261115050311.log > "
        "masked.log");
  }

  void addExplain() {
    CLI::App* const command = add("explain", "Tells what findings mean, and what to do");
    command->add_option("CODE", first_, "The code of a finding; all of them where it is not given");
    command->footer("Example: qbreport explain not-wired");
  }

  CLI::App app_{"Reads the reports of the Quellbright Domino Module diagnostics.", "qbreport"};
  std::string command_;
  std::vector<std::string> reports_;
  std::string first_;
  std::string second_;
  std::optional<std::string> map_;
  bool isOffline_ = false;
  bool isPlain_ = false;
  Severity failOn_ = Severity::note;
};

int runUnflushed(const std::vector<std::string>& arguments) {
  Commands commands;
  try {
    return commands.run(arguments);
  } catch (const CLI::ParseError& error) {
    return commands.tell(error);
  } catch (const Failure& failure) {
    return fail(failure.what());
  } catch (const std::bad_alloc&) {
    return fail("the report is too large for the memory");
  }
}

}  // namespace

int runCommand(const std::vector<std::string>& arguments) {
  const int status = runUnflushed(arguments);
  std::cout.flush();
  return std::cout ? status : fail("standard output cannot be written");
}

}  // namespace reader
