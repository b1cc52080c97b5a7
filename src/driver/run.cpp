#include "driver/run.h"

#include <cstring>
#include <map>
#include <string>
#include <vector>

#include "base/paths.h"
#include "base/report_log.h"
#include "base/text.h"
#include "configuration/sender_filter_cache.h"
#include "configuration/vrx_configuration.h"
#include "directory/address_book.h"
#include "directory/nab_import_test_run.h"
#include "directory/recipient_profiles.h"
#include "documents/customer_profile.h"
#include "documents/event_steps.h"
#include "documents/installed_updates_step.h"
#include "documents/server_profile.h"
#include "driver/access_test.h"
#include "driver/environment_checks.h"
#include "driver/log_folder.h"
#include "notes/api.h"
#include "notes/domino_api_tools.h"
#include "platform/console.h"
#include "platform/files.h"
#include "platform/process.h"

namespace driver {
namespace {

namespace DominoApiTools = notes::DominoApiTools;
using base::Output;
using base::ReportLog;
using configuration::SenderFilterCache;
using configuration::VRXConfiguration;
using platform::printNarrowLine;
using platform::printWideLine;

constexpr const char* notesLibrary = "nnotes.dll";
constexpr int sectionIndent = 5;

void printUsage(const char* programName) {
  printNarrowLine(std::string("Syntax: ") + programName + " <path to domino> [stdout]");
  printNarrowLine(
      "The tool will create a diagnostic-file named VRX-DIAGNOSTIC<date>.log placed in the "
      "quellbright-folder in the data-directory.");
  printNarrowLine(
      "If the optional parameter \"stdout\" is given after the <path to domino>, output will also "
      "be written to stdout.");
}

// Loads the Notes library from its own folder, which becomes the current directory. False, after a
// line on the console, if that fails.
bool loadNotes(const char* programDirectory) {
  // A folder that is not there shows as a library that is not.
  platform::changeDirectory(programDirectory);
  if (!base::fileExists(base::toWideFromLocal(notesLibrary))) {
    printNarrowLine("Unable to find nnotes.dll.");
    return false;
  }
  if (!notes::loadNotesLibrary(notesLibrary)) {
    printNarrowLine("Unable to load nnotes.dll.");
    return false;
  }
  return true;
}

// Initialises the library with the arguments of the process, which it may change. False, after a
// line on the console, if that fails.
bool initialiseNotes(int argc, char** argv) {
  const STATUS status = notes::NotesInitExtended(argc, argv);
  if (status == 0) return true;
  printNarrowLine("Could not initialize notes: " + DominoApiTools::errorTextNarrow(status) + ".");
  return false;
}

void reportEnvironment(const Output& output) {
  std::string text;
  systemEnvironmentText(environmentNames(), text, sectionIndent);
  output.reportFirst(base::toWideFromUtf7(text.c_str()));
  dominoEnvironmentText(environmentChecks(), text, sectionIndent);
  output.reportFirst(base::toWideFromUtf7(text.c_str()));
}

void reportFiles(const Output& output) {
  const std::u16string dataDirectory = DominoApiTools::dataDirectory();
  const std::u16string executableDirectory = DominoApiTools::executableDirectory();
  std::u16string text;
  fileCheckText(checkedFiles(executableDirectory, dataDirectory), text, sectionIndent);
  output.reportFirst(text);
}

// Both documents are read anew for the console, and only once both stand in the report.
void reportProfiles(const Output& output) {
  if (output.report.isEnabled(base::ordinaryLevel)) {
    output.report.write(documents::customerProfileText());
    output.report.write(documents::serverProfileText());
  }
  if (output.toConsole) {
    printWideLine(documents::customerProfileText());
    printWideLine(documents::serverProfileText());
  }
}

void reportFilteredUsers(const Output& output) {
  try {
    std::uint32_t count = 0;
    directory::countFilteredUsers(count);
    output.reportFirst(u"Number of filtered users: " + base::numberToText(count));
  } catch (const directory::UserCountError& error) {
    output.reportFirst(u"Could not count users: " + error.message());
  }
}

void reportConfiguration(VRXConfiguration& configuration, const Output& output) {
  try {
    configuration.initialise();
    bool reloaded = false;
    configuration.refresh(reloaded);
    output.reportFirst(configuration.report());
  } catch (const VRXConfiguration::ConfigurationError& error) {
    output.reportFirst(u"Could not load configuration: " + error.message());
  }
}

void reportSenderFilter(const Output& output) {
  constexpr std::int32_t refreshSeconds = 60;
  try {
    SenderFilterCache cache(refreshSeconds);
    bool reloaded = false;
    cache.refresh(reloaded);
    std::u16string text;
    cache.print(text, sectionIndent);
    output.reportFirst(text);
  } catch (const SenderFilterCache::SenderFilterCacheError& error) {
    output.reportFirst(u"Could not load senderfiltercache: " + error.message());
  }
}

// On the console only.
void showSimulatedPath() {
  const directory::AddressBook book(directory::namesNsf);
  printWideLine(u"Parsed simulated path for \"names.nsf\":" + book.describe());
}

// The order of the report.
void reportAll(const Output& output, const std::u16string& reportDirectory) {
  reportEnvironment(output);
  reportFiles(output);
  reportProfiles(output);
  reportFilteredUsers(output);
  VRXConfiguration configuration;
  reportConfiguration(configuration, output);
  testAccess(configuration, reportDirectory, output);
  reportSenderFilter(output);
  directory::testNabImport(output.report, output.toConsole);
  documents::showInstalledUpdates(output.report, output.toConsole);
  showSimulatedPath();
  documents::createTestEvents(output.report, output.toConsole);
  documents::showEvents(output.report, output.toConsole);
}

}  // namespace

ExitStatus run(int argc, char** argv) {
  platform::prepareProcess();
  printNarrowLine("Quellbright Domino Module Diagnostics version " PROGRAM_VERSION);
  if (argc < 2) {
    printUsage(argc > 0 ? argv[0] : "");
    return ExitStatus::notStarted;
  }
  if (!loadNotes(argv[1])) return ExitStatus::notStarted;
  const bool writeToConsole = argc > 2 && std::strcmp(argv[2], "stdout") == 0;
  if (!initialiseNotes(argc, argv)) return ExitStatus::notStarted;

  // Without a folder of its own the report lands at the root of the current drive.
  const std::u16string reportDirectory = makeLogFolder(DominoApiTools::dataDirectory(), u"");
  ReportLog report(reportDirectory, u"Quellbright-DIAGNOSTIC-", u".log", u"VRX-DIAGNOSTIC",
                   u"%d-%m-%Y %H:%M:%S", base::ordinaryLevel, false);
  report.open();
  printWideLine(u"Output from diagnostic is written to: " + report.fileName());

  reportAll({report, writeToConsole}, reportDirectory);
  notes::NotesTerm();
  report.close();
  return ExitStatus::completed;
}

}  // namespace driver
