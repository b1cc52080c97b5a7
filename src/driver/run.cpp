#include "driver/run.h"

#include <cstring>
#include <map>
#include <string>
#include <vector>

#include "base/paths.h"
#include "base/report_log.h"
#include "base/text.h"
#include "driver/environment_checks.h"
#include "notes/api.h"
#include "notes/domino_api_tools.h"
#include "platform/console.h"
#include "platform/files.h"
#include "platform/process.h"

namespace driver {
namespace {

namespace DominoApiTools = notes::DominoApiTools;
using base::ReportLog;
using platform::printLine;

constexpr const char* notesLibrary = "nnotes.dll";
constexpr int ordinaryLevel = 2;
constexpr int sectionIndent = 5;

void printUsage(const char* programName) {
  printLine(std::string("Syntax: ") + programName + " <path to domino> [stdout]");
  printLine(
      "The tool will create a diagnostic-file named VRX-DIAGNOSTIC<date>.log placed in the "
      "quellbright-folder in the data-directory.");
  printLine(
      "If the optional parameter \"stdout\" is given after the <path to domino>, output will also "
      "be written to stdout.");
}

// Brings the Notes library up, with its own folder as the current directory. False, after a line on
// the console, if that fails.
bool startNotes(int argc, char** argv) {
  // A folder that is not there shows as a library that is not.
  platform::changeDirectory(argv[1]);
  if (!base::fileExists(base::toWideFromLocal(notesLibrary))) {
    printLine("Unable to find nnotes.dll.");
    return false;
  }
  if (!notes::loadNotesLibrary(notesLibrary)) {
    printLine("Unable to load nnotes.dll.");
    return false;
  }
  const STATUS status = notes::NotesInitExtended(argc, argv);
  if (status != 0) {
    printLine("Could not initialize notes: " + DominoApiTools::errorTextNarrow(status) + ".");
    return false;
  }
  return true;
}

// Makes the folder for the report within the data directory and gives its path; empty if there is
// none, so that the report lands at the root of the current drive.
std::u16string makeReportDirectory() {
  const std::u16string dataDirectory = DominoApiTools::dataDirectory();
  if (!base::createFolder(dataDirectory, u"Quellbright")) return {};
  return dataDirectory + u"//Quellbright";
}

// The steps of a run that has a report.
class Steps {
 public:
  Steps(ReportLog& report, bool writeToConsole) : report_(report), console_(writeToConsole) {}

  void environment() {
    std::string text;
    systemEnvironmentText(environmentNames(), text, sectionIndent);
    say(base::toWideFromUtf7(text.c_str()));
    dominoEnvironmentText(environmentChecks(), text, sectionIndent);
    say(base::toWideFromUtf7(text.c_str()));
  }

  void files() {
    const std::u16string dataDirectory = DominoApiTools::dataDirectory();
    const std::u16string executableDirectory = DominoApiTools::executableDirectory();
    std::u16string text;
    fileCheckText(checkedFiles(executableDirectory, dataDirectory), text, sectionIndent);
    say(text);
  }

 private:
  // Reports a text: in the report first, then on the console.
  void say(const std::u16string& text) {
    if (report_.isEnabled(ordinaryLevel)) report_.write(text);
    if (console_) printLine(text);
  }

  ReportLog& report_;
  bool console_;
};

}  // namespace

ExitStatus run(int argc, char** argv) {
  platform::prepareProcess();
  printLine("Quellbright Domino Module Diagnostics version 0.0.1.6b");
  if (argc < 2) {
    printUsage(argc > 0 ? argv[0] : "");
    return ExitStatus::notStarted;
  }
  if (!startNotes(argc, argv)) return ExitStatus::notStarted;
  const bool writeToConsole = argc > 2 && std::strcmp(argv[2], "stdout") == 0;

  ReportLog report(makeReportDirectory(), u"Quellbright-DIAGNOSTIC-", u".log", u"VRX-DIAGNOSTIC",
                   u"%d-%m-%Y %H:%M:%S", ordinaryLevel, false);
  report.open();
  printLine(u"Output from diagnostic is written to: " + report.fileName());

  Steps steps(report, writeToConsole);
  steps.environment();
  steps.files();

  // The library goes down while the report is still open, so that its last words could be told.
  notes::NotesTerm();
  report.close();
  return ExitStatus::completed;
}

}  // namespace driver
