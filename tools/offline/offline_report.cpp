#include "offline/offline_report.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <iostream>

#include "import/import.h"
#include "offline/configuration.h"
#include "offline/exported_stores.h"
#include "offline/files.h"
#include "offline/mail_files.h"
#include "offline/messages.h"
#include "offline/program_texts.h"
#include "offline/programs.h"
#include "offline/server_folder.h"
#include "offline/settings.h"
#include "offline/stored_notes.h"
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
  if (!zone)
    warn("the Timezone of notes.ini is none of whole hours, and 0 is taken: " + text +
         "; --timezone tells the hours west of GMT");
  return zone.value_or(std::chrono::hours());
}

// Of persons and mail-in databases the diagnostics read these; the others are nobody's business.
std::size_t stripOfPrivateItems(store::Note& note) {
  constexpr std::array kept = {"Form", "Type", "FullName", "MailServer", "MailFile"};
  const std::string& type = textOf(note, "Type");
  if (type != "Person" && type != "Database") return 0;
  return std::erase_if(note.items, [&kept](const store::Item& item) {
    return std::ranges::none_of(
        kept, [&item](const char* name) { return store::equalNames(item.name, name); });
  });
}

dxl::Totals importExport(const dxl::ImportOptions& options, std::ostream& leftOut) {
  std::string step;
  for (const std::string& exported : options.exports) step += exported + " ";
  step += "-> " + fs::path(options.store).filename().string();
  tell(step);
  leftOut << step << '\n';
  dxl::Report report(&leftOut);
  const dxl::Totals totals = dxl::importExports(options, report);
  report.totals(totals);
  if (totals.hasOtherReplica)
    throw Failed("these exports have different replica ids, and are of different databases: " +
                 step);
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
    const std::optional<fs::path> report = folder.report();
    throw Failed("the diagnostics did not finish; their exit status is " + std::to_string(status) +
                 (report ? ", and what they wrote is " + report->string() : ""));
  }
}

// Everything that the diagnostics need.
void layOut(const Options& options, const Programs& programs, const Settings& settings,
            const ServerFolder& folder) {
  const std::chrono::hours zone = chooseZone(options, settings);
  const std::vector<ExportedStore> stores = storesOf(options.exports);

  folder.create();
  fs::copy_file(programs.library, folder.program() / "nnotes.dll");
  fs::permissions(folder.program() / "nnotes.dll", fs::perms::owner_read | fs::perms::owner_write);
  std::ofstream leftOut(folder.leftOut());
  const auto importStore = [&](const ExportedStore& store, auto strip) {
    std::vector<std::string> exports;
    for (const fs::path& exported : store.exports) exports.push_back(exported.string());
    return importExport({zone, false, exports, (folder.data() / store.name).string(), strip},
                        leftOut);
  };
  const dxl::Totals totals = importStore(stores.front(), nullptr);
  const Configuration configuration = readConfiguration(folder.data() / stores.front().name);
  requireUse(configuration, totals, stores.front().exports.front().string());
  const std::vector<ExportedStore> books(stores.begin() + 1, stores.end());
  const std::string server = chooseServer(options, settings, configuration.servers);
  for (const ExportedStore& book : books) {
    const dxl::Totals ofBook = importStore(book, stripOfPrivateItems);
    tell("of persons and databases five items each are kept; " + std::to_string(ofBook.stripped) +
         " others are not");
  }
  if (!leftOut.flush()) warn(folder.leftOut().string() + ": not all of it could be written");

  writeNewFile(folder.program() / "notes.ini",
               settings.textWith({{"NotesProgram", folder.program().string()},
                                  {"Directory", folder.data().string()},
                                  {"Timezone", std::to_string(zone.count())},
                                  {"ServerName", server},
                                  {"Names", listOfBooks(settings.value("Names"), books)}}));
  for (const ExportedStore& book : books)
    layOutMailFiles(folder.data() / book.name, server, configuration.recipients, folder.data());
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
  const std::optional<fs::path> report = folder.report();
  if (!report) throw Failed("the diagnostics left no report");
  tellWarnings();
  std::cout << "The report: " << report->string() << '\n';
}

}  // namespace offline
