#include "report/command_line.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <iostream>
#include <new>
#include <optional>

#include "report/commands.h"
#include "report/files.h"
#include "report/output.h"

namespace reader {
namespace {

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
    addHtml();
    addDiff();
    addMask();
    addUnmask();
    addExplain();
  }

  /// Raises CLI::ParseError and Failure.
  int run(std::vector<std::string> arguments) {
    if (!arguments.empty()) requireCommand(arguments.front());
    std::ranges::reverse(arguments);
    app_.parse(std::move(arguments));
    const ReportFiles reports(reports_);
    Output output(output_, inputs(reports));
    const int status = runTo(output.stream(), reports);
    output.finish();
    return status;
  }

  /// Raises Failure.
  int tell(const CLI::ParseError& error) {
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
    if (!word.starts_with('-'))
      throw Failure("there is no command " + word + "; the commands are " + names);
  }

  std::vector<std::string> inputs(const ReportFiles& reports) const {
    std::vector<std::string> names = reports.names();
    for (const std::string& name : {first_, second_, map_.value_or("")}) {
      if (!name.empty()) names.push_back(name);
    }
    return names;
  }

  int runTo(std::ostream& out, const ReportFiles& reports) {
    const Origin origin = isOffline_ ? Origin::exports : Origin::server;
    if (command_ == "check") return check(reports, {origin, !isPlain_ && !output_, failOn_}, out);
    if (command_ == "json") return json(reports, origin, out);
    if (command_ == "html") return html(reports, title_, origin, out);
    if (command_ == "explain") return explain(code_, out);
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
        "more. With several reports, or a folder, each line begins\nwith the name of its report "
        "and a tab.\n"
        "Exit status: 0 without findings, 1 with findings.\n"
        "Example: qbreport check --fail-on error Quellbright-DIAGNOSTIC-20261115050311.log");
  }

  void addJson() {
    CLI::App* const command = add("json", "Writes reports and their findings as JSON");
    addReports(command);
    addOffline(command);
    command->footer(
        "The form is that of report.schema.json, which lies beside the program or in "
        "/usr/share/qbdiagnostics;\neach of several reports, or of a folder, is a line.\n"
        "Example: qbreport json Quellbright-DIAGNOSTIC-20261115050311.log > report.json");
  }

  void addHtml() {
    CLI::App* const command = add("html", "Writes one page of reports, for a browser");
    addReports(command);
    addOffline(command);
    command->add_option("--title", title_, "What stands at the top of the page")->type_name("TEXT");
    command->footer(
        "The page needs nothing else, holds no script, and loads nothing: it can be mailed and "
        "kept.\nExit status: 0, with findings or without.\n"
        "Example: qbreport html -o servers.html reports");
  }

  void addReports(CLI::App* command) {
    command->add_option("REPORT", reports_, "The reports; a folder stands for those in it")
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
        "have stays.\nIn a report the values have their bytes, in any other text they are UTF-8.\n"
        "Example: qbreport unmask --map names.map answer.txt");
  }

  void addExplain() {
    CLI::App* const command = add("explain", "Tells what findings mean, and what to do");
    command->add_option("CODE", code_, "The code of a finding; all of them where it is not given");
    command->footer("Example: qbreport explain not-wired");
  }

  CLI::App app_{"Reads the reports of the Quellbright Domino Module diagnostics.", "qbreport"};
  std::string command_;
  std::vector<std::string> reports_;
  std::string title_ = "Quellbright Domino Module diagnostics";
  std::string code_;
  std::string first_;
  std::string second_;
  std::optional<std::string> map_;
  std::optional<std::string> output_;
  bool isOffline_ = false;
  bool isPlain_ = false;
  Severity failOn_ = Severity::note;
};

int runOrTell(const std::vector<std::string>& arguments) {
  Commands commands;
  try {
    return commands.run(arguments);
  } catch (const CLI::ParseError& error) {
    return commands.tell(error);
  }
}

}  // namespace

int runCommand(const std::vector<std::string>& arguments) {
  try {
    return runOrTell(arguments);
  } catch (const Failure& failure) {
    tellFailure(failure.what());
  } catch (const std::bad_alloc&) {
    tellFailure("the report is too large for the memory");
  }
  return failed;
}

}  // namespace reader
