#include "offline/offline_report.h"

#include <algorithm>
#include <fstream>
#include <iostream>

#include "import/import.h"
#include "offline/book_names.h"
#include "offline/configuration.h"
#include "offline/files.h"
#include "offline/mail_files.h"
#include "offline/messages.h"
#include "offline/program_texts.h"
#include "offline/programs.h"
#include "offline/server_folder.h"
#include "offline/settings.h"
#include "store/letters.h"
#include "store/notes_ini.h"

namespace offline {
namespace {

namespace fs = std::filesystem;

std::chrono::hours chooseZone(const Options& options, const Settings& settings) {
  if (options.zone) return *options.zone;
  const std::string text = settings.value("Timezone");
  if (text.empty()) return {};
  const auto zone = store::zoneFrom(text);
  if (!zone) warn("the Timezone of notes.ini is none, and 0 is taken: " + text);
  return zone.value_or(std::chrono::hours());
}

dxl::Totals importExport(std::chrono::hours zone, const fs::path& exported, const fs::path& store,
                         std::ostream& leftOut) {
  const std::string step = exported.string() + " -> " + store.filename().string();
  tell(step);
  leftOut << step << '\n';
  dxl::Report report(&leftOut);
  const dxl::Totals totals =
      dxl::importExports({zone, false, {exported.string()}, store.string()}, report);
  report.totals(totals);
  return totals;
}

// What makes a report empty is said, and why.
void requireUse(const Configuration& configuration, const dxl::Totals& totals,
                const std::string& exported) {
  const std::string reason = "no profile qbcustomerprofile in " + exported +
                             ": the wrong file, note form, or exported without profiles";
  if (totals.profilesInNoteForm != 0) {
    warn(std::to_string(totals.profilesInNoteForm) + " profiles of " + exported +
         " are in note form and left out: ask for an export that is not");
  }
  if (!configuration.isOfAddOn) throw Failed(reason + "; nothing in it is of the add-on");
  if (!configuration.hasCustomerProfile) warn(reason);
}

std::string listOf(const std::vector<std::string>& servers) {
  std::string names;
  for (const std::string& server : servers) names += " --server \"" + server + '"';
  return names;
}

std::string onlyServer(const std::vector<std::string>& servers) {
  if (servers.empty()) {
    warn(
        "no server is known: there is no server profile, and neither --server nor notes.ini names "
        "one");
    return {};
  }
  if (servers.size() == 1) return servers.front();
  throw Failed("the configuration has several server profiles; choose one:" + listOf(servers));
}

std::string chooseServer(const Options& options, const Settings& settings,
                         const std::vector<std::string>& servers) {
  std::string chosen = options.server.value_or(settings.value("ServerName"));
  const bool isGiven = !chosen.empty();
  if (!isGiven) chosen = onlyServer(servers);
  if (hasControl(chosen)) {
    throw Failed("notes.ini cannot hold the name of the server, which has a control character: " +
                 chosen);
  }
  const bool hasProfile = std::ranges::any_of(
      servers, [&chosen](const std::string& server) { return store::equalNames(server, chosen); });
  if (isGiven && !hasProfile) {
    const std::string words = "no server profile is that of the server " + chosen +
                              (servers.empty() ? "" : "; there are:" + listOf(servers));
    tell(words);  // at once, for whoever mistyped it
    warn(words);
  }
  return chosen;
}

void runDiagnostics(const Programs& programs, const ServerFolder& folder) {
  constexpr int finished = 1;  // the reverse of what is usual
  const int status = runProgram({programs.diagnostics.string(), folder.program().string()});
  if (status != finished) {
    throw Failed("the diagnostics did not finish; their exit status is " + std::to_string(status));
  }
}

// Everything that the diagnostics need.
void layOut(const Options& options, const Programs& programs, const Settings& settings,
            const ServerFolder& folder) {
  const std::chrono::hours zone = chooseZone(options, settings);
  const std::vector<AddressBook> books = nameBooks(options.addressBooks);
  openToRead(options.configuration);  // what is not there shows before anything is laid out

  folder.create();
  fs::copy_file(programs.library, folder.program() / "nnotes.dll");
  std::ofstream leftOut(folder.leftOut());
  const fs::path store = folder.data() / configurationStore;
  const dxl::Totals totals = importExport(zone, options.configuration, store, leftOut);
  const Configuration configuration = readConfiguration(store);
  requireUse(configuration, totals, options.configuration.string());
  const std::string server = chooseServer(options, settings, configuration.servers);
  for (const AddressBook& book : books)
    importExport(zone, book.exported, folder.data() / book.store, leftOut);
  if (!leftOut.flush()) warn(folder.leftOut().string() + ": not all of it could be written");

  writeNewFile(folder.program() / "notes.ini",
               settings.textWith({{"NotesProgram", folder.program().string()},
                                  {"Directory", folder.data().string()},
                                  {"Timezone", std::to_string(zone.count())},
                                  {"ServerName", server},
                                  {"Names", listOfBooks(settings.value("Names"), books)}}));
  for (const AddressBook& book : books)
    layOutMailFiles(folder.data() / book.store, server, configuration.recipients, folder.data());
}

}  // namespace

void makeReport(const Options& options) {
  const Programs programs = findPrograms();
  const Settings settings = options.notesIni ? Settings::read(*options.notesIni) : Settings();
  const ServerFolder folder(options.into);
  try {
    layOut(options, programs, settings, folder);
  } catch (...) {
    folder.undo();
    throw;
  }
  runDiagnostics(programs, folder);
  const fs::path report = folder.report();
  tellWarnings();
  std::cout << "The report: " << report.string() << '\n';
}

}  // namespace offline
