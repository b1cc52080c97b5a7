// A Notes library whose answers lie ready in arrays, so that a run against it takes little more
// than its own work. DOCUMENTS_TO_FIND tells how many documents of each kind a search finds. At the
// end the library writes to FILE_OF_CALLS, if that is set, how often each operation was called and
// what the process has written.
#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <vector>

#include "documents.h"

#define EXPORT extern "C" __attribute__((visibility("default")))

namespace {

struct Item {
  const char* name;
  WORD type;
  const char* text;
};

constexpr Item eventItems[] = {{"category_text", TYPE_TEXT, CATEGORY},
                               {"event", TYPE_TEXT, EVENT},
                               {"reported", TYPE_TIME, MOMENT},
                               {}};
constexpr Item filterItems[] = {{"original_input", TYPE_TEXT, "as typed"},
                                {"filter_email_or_domain", TYPE_NUMBER, ""},
                                {"filter_black_or_white", TYPE_NUMBER, ""},
                                {"filter_email", TYPE_TEXT, FILTER_KEY},
                                {}};
constexpr Item updateItems[] = {{"install_item", TYPE_TEXT, UPDATE},
                                {"update_version", TYPE_TEXT, VERSION},
                                {"installed_on_server", TYPE_TEXT, SERVER},
                                {"installed_date", TYPE_TIME, MOMENT},
                                {}};
constexpr Item personItems[] = {{"Type", TYPE_TEXT, "Person"},
                                {"MailServer", TYPE_TEXT, SERVER},
                                {"MailFile", TYPE_TEXT, MAIL_FILE},
                                {"FullName", TYPE_TEXT_LIST, NAME},
                                {}};
constexpr Item noItems[] = {{}};

constexpr const Item* itemsOfKind[] = {eventItems, filterItems, updateItems, personItems, noItems};

// What a formula of each kind holds. Another one finds nothing.
constexpr const char* marks[kinds] = {"qbEvent", "qbsenderfilter", "qbinstallationupdatenote",
                                      "Person"};

std::array<DWORD, kinds + 1> counts{};
std::vector<std::array<char, sizeof FILTER_KEY>> filterKeys;

#define COUNTER(result, name, arguments) unsigned long callsOf##name;
NOTES_OPERATIONS(COUNTER)
#undef COUNTER
#define CALLED(name) (++callsOf##name)

// A note's id and handle are its number and, above it, its kind.
const Item* find(NOTEHANDLE note, const char* name) {
  const Item* item = itemsOfKind[note >> 24];
  while (item->name != nullptr && std::strcmp(item->name, name) != 0) ++item;
  return item;
}

WORD put(const char* text, char* buffer) {
  const std::size_t length = std::strlen(text);
  std::memcpy(buffer, text, length + 1);
  return static_cast<WORD>(length);
}

// The keys come in no order, so that they have to be sorted.
void makeFilterKeys() {
  const std::size_t count = counts[filters];
  filterKeys.resize(count);
  for (std::size_t i = 0; i < count; ++i) {
    std::memcpy(filterKeys[i].data(), FILTER_KEY, sizeof FILTER_KEY);
    std::size_t number = i * 7919 % count;
    for (std::size_t at = DIGITS_END; number != 0; number /= 10) {
      filterKeys[i][--at] = static_cast<char>('0' + number % 10);
    }
  }
}

}  // namespace

EXPORT STATUS NotesInitExtended(int, char**) {
  CALLED(NotesInitExtended);
  readCounts(counts.data());
  makeFilterKeys();
  return 0;
}

EXPORT void NotesTerm(void) {
  CALLED(NotesTerm);
  const char* const path = std::getenv("FILE_OF_CALLS");
  if (path == nullptr) return;
  std::ofstream out(path);
#define SHOW(result, name, arguments) out << #name " " << callsOf##name << '\n';
  NOTES_OPERATIONS(SHOW)
#undef SHOW
  out << std::ifstream("/proc/self/io").rdbuf();
}

EXPORT WORD OSLoadString(void*, STATUS, char* buffer, WORD) {
  CALLED(OSLoadString);
  return put("failed", buffer);
}

EXPORT BOOL OSGetEnvironmentString(const char* name, char* value, WORD) {
  CALLED(OSGetEnvironmentString);
  const bool known = std::strcmp(name, "ServerName") == 0;
  put(known ? SERVER : "", value);
  return known ? 1 : 0;
}

EXPORT WORD OSGetDataDirectory(char* path) { return CALLED(OSGetDataDirectory), put(".", path); }

EXPORT void OSGetExecutableDirectory(char* path) {
  CALLED(OSGetExecutableDirectory);
  put("./", path);
}

EXPORT STATUS OSPathNetConstruct(const char*, const char*, const char* file, char* path) {
  CALLED(OSPathNetConstruct);
  put(file, path);
  return 0;
}

EXPORT STATUS OSPathNetParse(const char* path, char* port, char* server, char* file) {
  CALLED(OSPathNetParse);
  *port = *server = '\0';
  put(path, file);
  return 0;
}

EXPORT void OSCurrentTIMEDATE(TIMEDATE* now) { CALLED(OSCurrentTIMEDATE), std::memset(now, 0, 8); }

EXPORT void OSGetIntlSettings(INTLFORMAT*, WORD) { CALLED(OSGetIntlSettings); }

EXPORT STATUS ConvertTextToTIMEDATE(const INTLFORMAT*, const TFMT*, char**, WORD, TIMEDATE*) {
  CALLED(ConvertTextToTIMEDATE);
  return 0;
}

EXPORT BOOL TimeGMToLocal(TIME*) { return CALLED(TimeGMToLocal), 0; }
EXPORT void* OSLockObject(HANDLE) {
  static char names[] = "names.nsf";
  CALLED(OSLockObject);
  return names;
}
EXPORT BOOL OSUnlockObject(HANDLE) { return CALLED(OSUnlockObject), 1; }
EXPORT STATUS OSMemFree(HANDLE) { return CALLED(OSMemFree), 0; }

EXPORT STATUS NSFDbOpen(const char*, DBHANDLE* db) {
  CALLED(NSFDbOpen);
  *db = 1;
  return 0;
}

EXPORT STATUS NSFDbOpenExtended(const char*, WORD, HANDLE, TIMEDATE*, DBHANDLE* db, TIMEDATE*,
                                TIMEDATE*) {
  CALLED(NSFDbOpenExtended);
  *db = 1;
  return 0;
}

EXPORT STATUS NSFDbClose(DBHANDLE) { return CALLED(NSFDbClose), 0; }

EXPORT STATUS NSFDbInfoGet(DBHANDLE, char*) {
  CALLED(NSFDbInfoGet);
  return 0;
}

EXPORT void NSFDbInfoParse(char*, WORD, char* buffer, WORD) {
  CALLED(NSFDbInfoParse);
  put(NAME, buffer);
}

EXPORT STATUS NSFDbReplicaInfoGet(DBHANDLE, DBREPLICAINFO* info) {
  CALLED(NSFDbReplicaInfoGet);
  std::memset(info, 0x5A, sizeof *info);
  return 0;
}

EXPORT STATUS NSFNoteCreate(DBHANDLE, NOTEHANDLE* note) {
  CALLED(NSFNoteCreate);
  *note = DWORD{kinds} << 24;
  return 0;
}

EXPORT STATUS NSFNoteOpen(DBHANDLE, NOTEID id, WORD, NOTEHANDLE* note) {
  CALLED(NSFNoteOpen);
  *note = id;
  return 0;
}

EXPORT STATUS NSFNoteUpdate(NOTEHANDLE, WORD) {
  CALLED(NSFNoteUpdate);
  return 0;
}

EXPORT STATUS NSFNoteClose(NOTEHANDLE) { return CALLED(NSFNoteClose), 0; }

EXPORT STATUS NSFProfileOpen(DBHANDLE, const char*, WORD, const char*, WORD, BOOL,
                             NOTEHANDLE* note) {
  CALLED(NSFProfileOpen);
  *note = DWORD{kinds} << 24;
  return 0;
}

EXPORT STATUS NSFProfileUpdate(NOTEHANDLE, const char*, WORD, const char*, WORD) {
  CALLED(NSFProfileUpdate);
  return 0;
}

EXPORT STATUS NSFItemInfo(NOTEHANDLE note, const char* name, WORD, void*, WORD* type, void*,
                          DWORD* length) {
  CALLED(NSFItemInfo);
  const Item* item = find(note, name);
  if (item->name == nullptr) return 1;
  if (type != nullptr) *type = item->type;
  if (length != nullptr) *length = sizeof(NUMBER) + 2;
  return 0;
}

EXPORT WORD NSFItemGetText(NOTEHANDLE note, const char* name, char* buffer, WORD) {
  CALLED(NSFItemGetText);
  const Item* item = find(note, name);
  return put(item == &filterItems[3] ? filterKeys[note & 0xFFFFFF].data() : item->text, buffer);
}

EXPORT WORD NSFItemGetTextListEntries(NOTEHANDLE, const char*) {
  return CALLED(NSFItemGetTextListEntries), NAMES;
}

EXPORT WORD NSFItemGetTextListEntry(NOTEHANDLE note, const char* name, WORD, char* buffer, WORD) {
  CALLED(NSFItemGetTextListEntry);
  return put(find(note, name)->text, buffer);
}

EXPORT BOOL NSFItemGetTime(NOTEHANDLE, const char*, TIMEDATE*) {
  CALLED(NSFItemGetTime);
  return 0;
}

EXPORT BOOL NSFItemGetNumber(NOTEHANDLE, const char*, NUMBER* number) {
  CALLED(NSFItemGetNumber);
  *number = 1;
  return 1;
}

EXPORT WORD NSFItemConvertToText(NOTEHANDLE note, const char* name, char* buffer, WORD, char) {
  CALLED(NSFItemConvertToText);
  return put(find(note, name)->text, buffer);
}

EXPORT STATUS NSFItemSetText(NOTEHANDLE, const char*, const char*, WORD) {
  CALLED(NSFItemSetText);
  return 0;
}

EXPORT STATUS NSFItemSetTime(NOTEHANDLE, const char*, const TIMEDATE*) {
  CALLED(NSFItemSetTime);
  return 0;
}

EXPORT STATUS NSFItemSetNumber(NOTEHANDLE, const char*, const NUMBER*) {
  CALLED(NSFItemSetNumber);
  return 0;
}

EXPORT STATUS NSFFormulaCompile(const char*, WORD, const char* formula, WORD, FORMULAHANDLE* handle,
                                WORD*, STATUS*, WORD*, WORD*, WORD*, WORD*) {
  CALLED(NSFFormulaCompile);
  DWORD kind = 0;
  while (kind < kinds && std::strstr(formula, marks[kind]) == nullptr) ++kind;
  *handle = kind;
  return 0;
}

EXPORT STATUS NSFSearch(DBHANDLE, FORMULAHANDLE formula, const char*, WORD, WORD, TIMEDATE*,
                        NSFSEARCHPROC callback, void* context, TIMEDATE*) {
  CALLED(NSFSearch);
  SEARCH_MATCH match{};
  for (DWORD i = 0; i < counts[formula]; ++i) {
    match.ID.NoteID = formula << 24 | i;
    if (callback(context, &match, nullptr) != 0) break;
  }
  return 0;
}

EXPORT STATUS NAMEGetAddressBooks(const char*, WORD, WORD* count, WORD* length, HANDLE* block) {
  CALLED(NAMEGetAddressBooks);
  *count = 1;
  *length = sizeof "names.nsf";
  *block = 1;
  return 0;
}
