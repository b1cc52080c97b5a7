// The import of a directory takes time in proportion to its entries. The Notes library is a table
// of functions that answer at once, so that the time is the import's own.
#include <cstring>
#include <string_view>

#include "directory/nab_import.h"
#include "notes/api.h"
#include "ratio.h"

namespace {

using directory::NAB::NabImport;

constexpr double mostOfDouble = 2.4;
constexpr FORMULAHANDLE personFormula = 1;
constexpr FORMULAHANDLE otherFormula = 2;

std::uint32_t persons = 0;

STATUS NOTES_CALL compile(const char*, WORD, const char* formula, WORD length,
                          FORMULAHANDLE* handle, WORD*, STATUS*, WORD*, WORD*, WORD*, WORD*) {
  const bool isPerson = std::string_view(formula, length) == "SELECT Type=\"Person\"";
  *handle = isPerson ? personFormula : otherFormula;
  return 0;
}

STATUS NOTES_CALL search(DBHANDLE, FORMULAHANDLE formula, const char*, WORD, WORD, TIMEDATE*,
                         NSFSEARCHPROC callback, void* context, TIMEDATE*) {
  if (formula != personFormula) return 0;
  SEARCH_MATCH match{};
  for (std::uint32_t id = 1; id <= persons; ++id) {
    match.ID.NoteID = id;
    callback(context, &match, nullptr);
  }
  return 0;
}

STATUS NOTES_CALL itemInfo(NOTEHANDLE, const char*, WORD, void*, WORD* type, void*, DWORD* length) {
  if (type != nullptr) *type = TYPE_TEXT;
  if (length != nullptr) *length = 8;
  return 0;
}

WORD put(std::string_view text, char* buffer) {
  buffer[text.copy(buffer, text.size())] = '\0';
  return static_cast<WORD>(text.size());
}

WORD NOTES_CALL itemText(NOTEHANDLE, const char* item, char* buffer, WORD) {
  return put(std::strcmp(item, "Type") == 0 ? "Person" : "mail/user.nsf", buffer);
}

void answerAtOnce() {
  notes::NotesApi& api = notes::api;
  api.NSFDbOpen = [](const char*, DBHANDLE* db) -> STATUS { return *db = 1, STATUS{0}; };
  api.NSFDbOpenExtended = [](const char*, WORD, HANDLE, TIMEDATE*, DBHANDLE* db, TIMEDATE*,
                             TIMEDATE*) -> STATUS { return *db = 1, STATUS{0}; };
  api.NSFDbClose = [](DBHANDLE) -> STATUS { return 0; };
  api.NSFDbReplicaInfoGet = [](DBHANDLE, DBREPLICAINFO*) -> STATUS { return 0; };
  api.NSFDbInfoGet = [](DBHANDLE, char*) -> STATUS { return 0; };
  api.NSFDbInfoParse = [](char*, WORD, char* title, WORD) { put("User", title); };
  api.NSFProfileOpen = [](DBHANDLE, const char*, WORD, const char*, WORD, BOOL,
                          NOTEHANDLE* note) -> STATUS { return *note = 1, STATUS{0}; };
  api.NSFNoteOpen = [](DBHANDLE, NOTEID, WORD, NOTEHANDLE* note) -> STATUS {
    return *note = 1, STATUS{0};
  };
  api.NSFNoteClose = [](NOTEHANDLE) -> STATUS { return 0; };
  api.NSFItemInfo = itemInfo;
  api.NSFItemGetText = itemText;
  api.NSFFormulaCompile = compile;
  api.NSFSearch = search;
  api.OSPathNetParse = [](const char*, char*, char*, char*) -> STATUS { return 0; };
  api.OSPathNetConstruct = [](const char*, const char*, const char*, char* path) -> STATUS {
    return put("mail/user.nsf", path), STATUS{0};
  };
}

std::size_t importAll(std::uint32_t count) {
  persons = count;
  NabImport nabImport(50, u"mail", true, true);
  std::size_t processed = 0;
  do {
    nabImport.step();
    processed += static_cast<std::size_t>(nabImport.result().processed);
  } while (!nabImport.done());
  return processed;
}

}  // namespace

int main() {
  answerAtOnce();
  if (importAll(1000) != 1000) return 1;
  Comparisons comparisons;
  comparisons.shortEnough("import of 100,000 persons against 50,000",
                          {[] { return importAll(100'000); }}, {[] { return importAll(50'000); }},
                          mostOfDouble);
  return comparisons.exitStatus();
}
