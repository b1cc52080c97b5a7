#include "fault_sweep/expectations.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace test {
namespace {

// Which calls of an operation a row is about, besides a single one by its number.
constexpr int any = -1;
constexpr int last = -2;
constexpr int even = -3;
constexpr int odd = -4;

constexpr std::size_t all = 1000;

struct Row {
  const char* section;
  const char* operation;
  const char* subject;  // "" for any
  int number;
  const char* line;  // "" if the failure is silent on purpose
  std::size_t lost;
  std::size_t changed = 0;
};

// In a line "%s" is the subject, "%w" the library's words and "%i" what an item says that cannot be
// read; where it says nothing, the failure is silent.
constexpr const char* notStarted = "not started";
constexpr const char* crash = "crash";
constexpr const char* hidden = "hidden";

#define OPEN_FAILED "Could not open the database: %s: %w."
#define CLOSE_FAILED "Could not close connection to the database: %w."
#define CONVERT_FAILED "Item \"%s\" is not present in Note."
#define CUSTOMER "* Could not load Customer profile: "
#define SERVER "* Could not load Server profile: "
#define DATABASE "Could not open database connection: "
#define USERS "* Could not count users: "
#define CONFIGURATION "* Could not load configuration: "
#define OUTER                                                                 \
  CONFIGURATION                                                               \
  "Could not open or read configuration database \"QBConf.nsf\". Check that " \
  "the file exists: "
#define INNER CONFIGURATION "Configuration load failed: Could not read configuration: "
#define SENDERS "* Could not load senderfiltercache: Could not complete search"
#define PROFILE "\t\tCould not load Default Recipient Profile: "
#define DIRECTORY "\t\tReadDirectoryError: Could not "
#define ENTRY "\t\tDirectoryEntryError: "
#define FIND "\t\t\tGet User By replicaId failed: Could not "
#define UPDATES_DATABASE "* Could not open or close database connection:  "
#define UPDATES_SEARCH "* Could not complete formula search:  "
#define UPDATE "* Could not load updateitem:  "
#define CREATE "* Create event error: "
#define EVENTS "* Error Testing Get VRX events: "
#define EVENT "* Now [Insert Error] "

// The first row that fits counts.
constexpr Row rows[] = {
    {"start", "NotesInitExtended", "", any, notStarted, 0},
    // The report lies at the root of the drive; its text does not tell.
    {"start", "OSGetDataDirectory", "", any, "", 0},

    {"variables", "OSGetEnvironmentString", "", any, "", 1},
    {"tokens", "OSGetEnvironmentString", "", any, "", 1},
    {"files", "OSGetDataDirectory", "", any, "", 2},

    {"customer", "NSFDbOpen", "", any, CUSTOMER DATABASE OPEN_FAILED, all},
    {"customer", "NSFDbClose", "", any, CUSTOMER DATABASE CLOSE_FAILED, all},
    {"customer", "NSFProfileOpen", "", any, CUSTOMER "Could not open Customer profile: %w", all},
    {"customer", "NSFNoteClose", "", any, CUSTOMER "Could not close profile note: %w", all},
    {"customer", "NSFItemInfo", "", any, CUSTOMER "Could not read note-item: %i", all},
    {"customer", "NSFItemGetText", "", any, "", 1},

    {"server", "NSFDbOpen", "", any, SERVER DATABASE OPEN_FAILED, all},
    {"server", "NSFDbClose", "", any, SERVER DATABASE CLOSE_FAILED, all},
    // Without its name the profile of no server is read.
    {"server", "OSGetEnvironmentString", "", any, "", 4},
    {"server", "NSFProfileOpen", "", any, SERVER "Could not open server profile document.", all},
    {"server", "NSFNoteClose", "", any, SERVER "Could not close server profile document.", all},
    {"server", "NSFItemInfo", "", any, SERVER "Could not read note-item: %i", all},
    {"server", "NSFItemGetText", "", any, "", 1},

    {"users", "NSFDbOpen", "", any, USERS "Could not open database connection" OPEN_FAILED, 1},
    {"users", "NSFDbClose", "", any, USERS "Could not open database connection" CLOSE_FAILED, 1},
    {"users", "NSFFormulaCompile", "", any, USERS "Could not compile searchFormula: %w", 1},
    {"users", "NSFSearch", "", any, USERS "Could not complete search%w", 1},
    {"users", "OSMemFree", "", any, "", 0},

    {"configuration", "OSGetDataDirectory", "", any, "", 0},
    {"configuration", "OSGetEnvironmentString", "", any, "", 0},
    {"configuration", "NSFDbOpen", "", 0, OUTER OPEN_FAILED, all},
    {"configuration", "NSFDbOpen", "", any, INNER OPEN_FAILED, all},
    {"configuration", "NSFDbClose", "", last, OUTER CLOSE_FAILED, all},
    {"configuration", "NSFDbClose", "", any, INNER CLOSE_FAILED, all},
    {"configuration", "NSFFormulaCompile", "", any,
     INNER "Could not compile configuration-search-formula: %w", all},
    {"configuration", "NSFSearch", "", any, INNER "Could not complete search for configuration: %w",
     all},
    {"configuration", "OSMemFree", "", any, "", 0},
    // A note that does not open shows the defaults.
    {"configuration", "NSFNoteOpen", "", any, "", 14},
    {"configuration", "NSFNoteClose", "", any, "", 0},
    // An item that cannot be read has its default, with up to three rows that follow from it.
    {"configuration", "NSFItemInfo", "", any, "", 4},
    {"configuration", "NSFItemGetText", "", any, "", 4},
    {"configuration", "NSFItemGetTextListEntries", "", any, "", 4},
    {"configuration", "NSFItemGetTextListEntry", "", any, "", 1},
    {"configuration", "NSFItemGetTime", "", any, "", 3},
    {"configuration", "TimeGMToLocal", "", any, "", 3},

    {"senders", "NSFDbOpen", "", 0,
     SENDERS " - could not open or close database-connection: " OPEN_FAILED, all},
    {"senders", "NSFDbClose", "", last,
     SENDERS " - could not open or close database-connection: " CLOSE_FAILED, all},
    {"senders", "NSFFormulaCompile", "", any, SENDERS ": Could not compile searchFormula: %w", all},
    {"senders", "NSFSearch", "", any, SENDERS ": Search failed%w", all},
    // The errors of single notes are kept and not printed; an entry counts although its note or
    // database does not close.
    {"senders", "NSFDbOpen", "", any, "", 1},
    {"senders", "NSFDbClose", "", 3, hidden, 0},
    {"senders", "NSFDbClose", "", any, "", 0},
    {"senders", "NSFNoteOpen", "", any, "", 1},
    {"senders", "NSFNoteClose", "", any, "", 0},
    {"senders", "NSFItemInfo", "", any, "", 1},
    {"senders", "NSFItemGetText", "original_input", any, "", 0},
    {"senders", "NSFItemGetText", "", any, "", 1},
    {"senders", "NSFItemGetNumber", "", any, "", 1},

    {"server name", "OSGetEnvironmentString", "", any, "* No servername found. Stopping NabImport.",
     all},

    {"directory", "OSGetEnvironmentString", "", any, "", 0},
    {"directory", "NSFDbOpen", "QBConf.nsf", any,
     PROFILE "Could not load Default Profile " OPEN_FAILED, all},
    {"directory", "NSFDbClose", "QBConf.nsf", any,
     PROFILE "Could not load Default Profile " CLOSE_FAILED, all},
    {"directory", "NSFProfileOpen", "", any,
     PROFILE "Could not open or close Default Profile: Could not open profile: %w", all},
    {"directory", "NSFNoteClose", "qbdefaultprofile", any,
     PROFILE "Could not open or close Default Profile: Could not close profile: %w", all},
    {"directory", "NSFItemInfo", "FilterSetting", any, PROFILE "Could not load Default Profile: %i",
     all},
    {"directory", "NSFItemGetText", "FilterSetting", any, "", 0},
    // Either step shows the line and two books, whose paths are others without a server.
    {"directory", "NAMEGetAddressBooks", "", any,
     "\t\tNAMEGetAddressBooks call to server mailfailed: %w", 4, 5},
    {"directory", "OSLockObject", "", any, "", all},
    {"directory", "OSUnlockObject", "", any, "", 0},
    {"directory", "OSMemFree", "", any, "", 0},
    {"directory", "OSPathNetParse", "", any,
     "\t\tAddressBooksError: Could not read entry (%s)OSPathNetParse call failed: %w", all},
    // One book that cannot be read ends the list of entries.
    {"directory", "NSFDbOpen", "", any, DIRECTORY "read directory: " OPEN_FAILED, all},
    {"directory", "NSFDbClose", "", any, DIRECTORY "read directory: " CLOSE_FAILED, all},
    {"directory", "NSFFormulaCompile", "", any, DIRECTORY "compile searchFormula: %w", all},
    {"directory", "NSFSearch", "", any, DIRECTORY "complete search%w", all},
    // One document that cannot be read is one entry less, of nine lines.
    {"directory", "NSFNoteOpen", "", any, "\t\tNotehandle Error: Could not open note: %w", 9},
    {"directory", "NSFNoteClose", "", 4, hidden, 0},
    {"directory", "NSFNoteClose", "", any, "\t\tNotehandle Error: Could not close note: %w", 9},
    {"directory", "NSFItemInfo", "Type", 0, ENTRY "Directory Type not set.", 9},
    {"directory", "NSFItemInfo", "FullName", any, ENTRY "Note error: %i", 9},
    {"directory", "NSFItemInfo", "MailFile", 0, "\t\t\tFilepath not set.", 9},
    {"mail-in databases", "NSFItemInfo", "MailServer", any,
     ENTRY "Could not read database Directory entry: %i", 9},
    {"mail-in databases", "NSFItemInfo", "MailFile", any,
     ENTRY "Could not read database Directory entry: %i", 9},
    {"directory", "NSFItemInfo", "", any, ENTRY "Could not read directory entry: %i", 9},
    {"directory", "NSFItemGetText", "Type", any, ENTRY "Directory Type not set.", 9},
    {"directory", "NSFItemGetText", "MailFile", any, "\t\t\tFilepath not set.", 9},
    {"directory", "NSFItemGetText", "", any, "", 1},
    {"directory", "NSFItemGetTextListEntries", "", any, "", 1},
    {"directory", "NSFItemGetTextListEntry", "", any, "", 1},

    {"import", "OSPathNetConstruct", "", any, "\t\t\tOSPathNetConstruct failed: %w", 9},
    {"import", "NSFDbOpenExtended", "", any, "\t\t\tNSFDbOpenExtended failed (Path: %s): %w", 9},
    {"import", "NSFDbReplicaInfoGet", "", any,
     "\t\t\tCould not read replicaId: Could not retrieve replica information: %w", 9},
    {"import", "NSFDbInfoGet", "", any, "\t\t\tCould not read dbtitle: %w", 9},
    {"import", "NSFDbOpen", "", any, FIND "connect to database QBConf.nsf: " OPEN_FAILED, 9},
    {"import", "NSFDbClose", "QBConf.nsf", any,
     FIND "connect to database QBConf.nsf: " CLOSE_FAILED, 9},
    {"import", "NSFDbClose", "", any, "\t\t\tCould not close dbconnection: " CLOSE_FAILED, 9},
    {"import", "NSFFormulaCompile", "", any,
     FIND "complete search: Could not compile searchFormula: %w", 9},
    {"import", "NSFSearch", "", any, FIND "complete search: Search failed%w", 9},
    // The words for the mail file that is missing.
    {"import", "OSLoadString", "", any, "", 1},

    {"updates", "NSFDbOpen", "", 0, UPDATES_DATABASE OPEN_FAILED, all},
    {"updates", "NSFDbOpen", "", 1, UPDATES_SEARCH OPEN_FAILED, all},
    {"updates", "NSFDbOpen", "", any, UPDATE OPEN_FAILED, all},
    {"updates", "NSFDbClose", "", 0, UPDATES_SEARCH CLOSE_FAILED, all},
    {"updates", "NSFDbClose", "", last, UPDATES_DATABASE CLOSE_FAILED, all},
    {"updates", "NSFDbClose", "", any, UPDATE CLOSE_FAILED, all},
    {"updates", "NSFFormulaCompile", "", any, UPDATES_SEARCH "Could not compile searchFormula: %w",
     all},
    {"updates", "NSFSearch", "", any, UPDATES_SEARCH "Search failed%w", all},
    {"updates", "NSFNoteOpen", "", any, UPDATE "Could not open note: %w", all},
    {"updates", "NSFNoteClose", "", any, UPDATE "Could not close note: %w", all},
    {"updates", "NSFItemInfo", "", any, UPDATE "%i", all},
    {"updates", "NSFItemGetText", "", any, "", 1},
    {"updates", "NSFItemConvertToText", "", any, UPDATE CONVERT_FAILED, all},

    {"simulated path", "OSPathNetParse", "", any, crash, all},

    // Up to three events are missing in the list behind.
    {"test events", "OSGetEnvironmentString", "", any, "", 0},
    {"test events", "NSFDbOpen", "", even, CREATE "DBconecction failed: " OPEN_FAILED, 3},
    {"test events", "NSFDbClose", "", odd, CREATE "DBconecction failed: " CLOSE_FAILED, 3},
    {"test events", "NSFNoteCreate", "", any, CREATE "NsfNoteCreate failed with error: %w", 3},
    {"test events", "NSFItemSetText", "", any, CREATE "NsfNoteError: %w", 3},
    {"test events", "NSFItemSetTime", "", any, CREATE "NsfNoteError: %w", 3},
    {"test events", "NSFItemSetNumber", "", any, CREATE "NsfNoteError: %w", 3},
    {"test events", "NSFNoteUpdate", "", any,
     CREATE "Could not open or close notehandle: Coule not update note%w", 3},
    // What fails of a language text leaves the event with the name of its category.
    {"test events", "NSFDbOpen", "", odd, "", 1},
    {"test events", "NSFDbClose", "", even, "", 1},
    {"test events", "NSFProfileOpen", "", any, "", 1},
    {"test events", "NSFNoteClose", "qblanguage", any, "", 1},
    {"test events", "NSFItemInfo", "", any, "", 1},
    {"test events", "NSFItemGetTextListEntries", "", any, "", 1},
    {"test events", "NSFItemGetTextListEntry", "", any, "", 1},
    {"test events", "NSFNoteClose", "", any,
     CREATE "Could not open or close notehandle: Could not close note: %w", 3},

    {"event list", "NSFDbOpen", "", 0, EVENTS "NsfDbConnection Error: " OPEN_FAILED, all},
    {"event list", "NSFDbOpen", "", 1, EVENTS "Formula Error: " OPEN_FAILED, all},
    {"event list", "NSFDbOpen", "", any, EVENT "NsfDbConnection Error: " OPEN_FAILED, 1},
    {"event list", "NSFDbClose", "", 0, EVENTS "Formula Error: " CLOSE_FAILED, all},
    {"event list", "NSFDbClose", "", last, EVENTS "NsfDbConnection Error: " CLOSE_FAILED, all},
    {"event list", "NSFDbClose", "", 2, hidden, 0},
    {"event list", "NSFDbClose", "", any, EVENT "NsfDbConnection Error: " CLOSE_FAILED, 1},
    {"event list", "NSFFormulaCompile", "", any,
     EVENTS "Formula Error: Could not compile searchFormula: %w", all},
    {"event list", "NSFSearch", "", any, EVENTS "Formula Error: Search failed%w", all},
    {"event list", "NSFNoteOpen", "", any, EVENT "NoteHandle Error: Could not open note: %w", 1},
    {"event list", "NSFNoteClose", "", 1, hidden, 0},
    {"event list", "NSFNoteClose", "", any, EVENT "NoteHandle Error: Could not close note: %w", 1},
    {"event list", "NSFItemInfo", "", any, EVENT "NsfNote Error: %i", 1},
    {"event list", "NSFItemGetText", "", any, "", 1},
    {"event list", "NSFItemConvertToText", "", any, EVENT "NsfNote Error: " CONVERT_FAILED, 1}};

constexpr const char* words = "Unknown status 0x2BAD";

// What an item says whose `number`-th question in a row fails, from 0. Most items are asked four
// times whether they hold a value, where the first "no" is an answer and no failure, and twice for
// their type.
std::string itemFailure(const Call& call) {
  std::string named = "Item \"" + call.subject + "\" is not present in Note.";
  const std::string bare = "Item is not present in Note.";
  const bool isTime = call.subject == "reported" || call.subject == "installed_date";
  const bool isList = call.subject == "FullName";
  const int number = isList ? call.number + 4 : call.number;
  if (number == 0) return "";
  if (number < 4) return named;
  const std::string& reason = number % 2 == 0 ? bare : named;
  // A list that is a single text is read as one in the end.
  if (isTime || (isList && number < 8)) return reason;
  return "Item \"" + call.subject + "\" is not present: " + reason;
}

void replace(std::string& text, const std::string& mark, const std::string& replacement) {
  const std::size_t at = text.find(mark);
  if (at != std::string::npos) text.replace(at, mark.size(), replacement);
}

// The rows of the directory hold for its mail-in databases too.
bool fitsSection(const Row& row, const std::string& section) {
  return section == row.section ||
         (section == "mail-in databases" && std::string(row.section) == "directory");
}

bool fitsNumber(const Row& row, const Call& call) {
  switch (row.number) {
    case any:
      return true;
    case last:
      return call.isLast;
    case even:
      return call.number % 2 == 0;
    case odd:
      return call.number % 2 != 0;
    default:
      return call.number == row.number;
  }
}

bool fits(const Row& row, const Call& call) {
  return fitsSection(row, call.section->name) && call.operation == row.operation &&
         (*row.subject == '\0' || call.subject == row.subject) && fitsNumber(row, call);
}

}  // namespace

Expectation expectationOf(const Call& call) {
  const Row* const row = std::find_if(std::begin(rows), std::end(rows),
                                      [&](const Row& each) { return fits(each, call); });
  if (row == std::end(rows)) {
    ADD_FAILURE() << "no row for " << call.section->name << ' ' << call.operation << ' '
                  << call.subject << ' ' << call.number;
    return {Outcome::silent, "", 0, 0};
  }
  if (row->line == notStarted) return {Outcome::notStarted, "", all, 0};
  if (row->line == crash) return {Outcome::crash, "", all, 0};
  if (row->line == hidden) return {Outcome::hidden, "", 0, 0};
  // What is absent anyway is none the worse for a failure.
  if (call.operation == "NSFItemInfo" && call.failsAnyway) return {Outcome::silent, "", 0, 0};
  std::string line = row->line;
  if (line.find("%i") != std::string::npos) {
    const std::string failure = itemFailure(call);
    if (failure.empty()) return {Outcome::silent, "", row->lost == all ? 1 : row->lost, 0};
    replace(line, "%i", failure);
  }
  replace(line, "%s", call.subject);
  replace(line, "%w", words);
  return {line.empty() ? Outcome::silent : Outcome::shown, line, row->lost, row->changed};
}

std::string profileLeftOpen(const Call& call) {
  if (call.operation != "NSFItemInfo" || expectationOf(call).outcome != Outcome::shown) return "";
  if (std::string(call.section->name) == "customer") return "qbcustomerprofile";
  return std::string(call.section->name) == "server" ? "qbserverprofile" : "";
}

std::vector<std::string> linesOfRepeatedFailures(const std::string& operation) {
  if (operation != "NAMEGetAddressBooks") return {};
  return {std::string("\t\tNAMEGetAddressBooks with no servername specified failed: ") + words,
          "\t\tNo Addressbooks found, using names.nsf."};
}

}  // namespace test
