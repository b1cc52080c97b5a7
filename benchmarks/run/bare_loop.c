/* What a run costs at least: the calls of the Notes library that the program makes for the
 * documents, and as many bytes in as many writes, from memory that holds no text.
 *
 *   bare_loop PROGRAM-DIRECTORY */
#include <dlfcn.h>
#include <fcntl.h>
#include <string.h>
#include <unistd.h>

#include "documents.h"

#define MEMBER(result, name, arguments) static result(*name) arguments;
NOTES_OPERATIONS(MEMBER)
#undef MEMBER

enum {
  size_at_which_a_file_starts_over = 500000,
  line_head = sizeof "25-11-2026 10:15:30\t(:)\t" - 1,
  batch_size = 50
};

static size_t head_size;
static char* bytes;
static int file;
static size_t position;

/* Writes a line of a text of `size` bytes. */
static void write_line(size_t size) {
  if (position >= size_at_which_a_file_starts_over) {
    position = 0;
    lseek(file, 0, SEEK_SET);
  }
  size += head_size + 2;
  if (write(file, bytes, size) == (ssize_t)size) position += size;
}

static void load(const char* directory) {
  if (chdir(directory) != 0) exit(1);
  void* library = dlopen("./nnotes.dll", RTLD_NOW);
  if (library == NULL) exit(1);
#define LOAD(result, name, arguments) *(void**)&name = dlsym(library, #name);
  NOTES_OPERATIONS(LOAD)
#undef LOAD
}

static void is_present(NOTEHANDLE note, const char* item, WORD length) {
  NSFItemInfo(note, item, length, NULL, NULL, NULL, NULL);
}

static void has_value(NOTEHANDLE note, const char* item, WORD length) {
  DWORD size = 0;
  for (int i = 0; i < 3; ++i) is_present(note, item, length);
  NSFItemInfo(note, item, length, NULL, NULL, NULL, &size);
}

static void get_type(NOTEHANDLE note, const char* item, WORD length) {
  WORD type = 0;
  is_present(note, item, length);
  NSFItemInfo(note, item, length, NULL, &type, NULL, NULL);
}

static void get_text(NOTEHANDLE note, const char* item, WORD length) {
  char text[NOTES_ITEM_TEXT_SIZE];
  has_value(note, item, length);
  get_type(note, item, length);
  NSFItemGetText(note, item, text, sizeof text);
}

static void get_time(NOTEHANDLE note, const char* item, WORD length) {
  char text[NOTES_TIME_TEXT_SIZE];
  has_value(note, item, length);
  get_type(note, item, length);
  NSFItemConvertToText(note, item, text, sizeof text, '|');
}

static void get_number(NOTEHANDLE note, const char* item, WORD length) {
  NUMBER number = 0;
  has_value(note, item, length);
  get_type(note, item, length);
  NSFItemGetNumber(note, item, &number);
}

#define ITEM(name) (name), sizeof(name) - 1

/* The ids that a search found. */
static NOTEID* ids;
static DWORD found;

static STATUS collect(void* context, SEARCH_MATCH* match, void* summary) {
  (void)context, (void)summary;
  ids[found++] = match->ID.NoteID;
  return 0;
}

static void search(DBHANDLE db, const char* formula, NSFSEARCHPROC callback) {
  FORMULAHANDLE compiled = 0;
  WORD unused = 0;
  NSFFormulaCompile(NULL, 0, formula, (WORD)strlen(formula), &compiled, &unused, &unused, &unused,
                    &unused, &unused, &unused);
  NSFSearch(db, compiled, NULL, 0, NOTE_CLASS_DATA, NULL, callback, NULL, NULL);
}

static void collect_ids(const char* formula) {
  DBHANDLE db = 0;
  found = 0;
  NSFDbOpen("QBConf.nsf", &db);
  search(db, formula, collect);
  NSFDbClose(db);
}

static void read_update(NOTEHANDLE note) {
  get_text(note, ITEM("install_item"));
  get_text(note, ITEM("update_version"));
  get_text(note, ITEM("installed_on_server"));
  get_time(note, ITEM("installed_date"));
}

static void read_event(NOTEHANDLE note) {
  get_text(note, ITEM("category_text"));
  get_text(note, ITEM("event"));
  get_time(note, ITEM("reported"));
}

static void read_filter(NOTEHANDLE note) {
  get_text(note, ITEM("original_input"));
  get_number(note, ITEM("filter_email_or_domain"));
  get_number(note, ITEM("filter_black_or_white"));
  get_text(note, ITEM("filter_email"));
}

static void read_person(NOTEHANDLE note) {
  get_text(note, ITEM("Type"));
  get_text(note, ITEM("MailServer"));
  get_text(note, ITEM("MailFile"));
  get_type(note, ITEM("FullName"));
  const WORD count = NSFItemGetTextListEntries(note, "FullName");
  for (WORD i = 0; i < count; ++i) {
    char text[NOTES_ITEM_TEXT_SIZE];
    NSFItemGetTextListEntry(note, "FullName", i, text, sizeof text);
  }
}

static void read_note(NOTEID id, void (*read)(NOTEHANDLE)) {
  DBHANDLE db = 0;
  NOTEHANDLE note = 0;
  NSFDbOpen("QBConf.nsf", &db);
  NSFNoteOpen(db, id, 0, &note);
  read(note);
  NSFNoteClose(note);
  NSFDbClose(db);
}

static STATUS visit_filter(void* context, SEARCH_MATCH* match, void* summary) {
  (void)context, (void)summary;
  read_note(match->ID.NoteID, read_filter);
  return 0;
}

static STATUS visit_person(void* context, SEARCH_MATCH* match, void* summary) {
  (void)context, (void)summary;
  NOTEHANDLE note = 0;
  NSFNoteOpen(1, match->ID.NoteID, 0, &note);
  read_person(note);
  NSFNoteClose(note);
  return 0;
}

static size_t size_of_filters(DWORD count) {
  return sizeof "SENDERFILTER CACHE" - 1 +
         count * (sizeof "\r\n\t\t\t\t\t" FILTER_KEY ":Black" - 1);
}

static size_t size_of_updates(DWORD count) {
  return sizeof "INSTALLED UPDATES:" - 1 +
         count * (sizeof "\r\n\t\t\t\t\t" SERVER "\r\n\t\t\t\t\t\tDate:\t\t" MOMENT
                         "\r\n\t\t\t\t\t\tItem:\t\t" UPDATE "\r\n\t\t\t\t\t\tVersion:\t" VERSION -
                  1);
}

static void run_filters(DWORD count) {
  search(1, "SELECT @LowerCase(Form) =\"qbsenderfilter\"", visit_filter);
  write_line(size_of_filters(count));
}

static void import_person(void) {
  char path[NOTES_PATH_SIZE];
  char info[NOTES_DBINFO_SIZE];
  char title[NOTES_TITLE_SIZE];
  DBHANDLE db = 0;
  DBREPLICAINFO replica;
  OSPathNetConstruct(NULL, SERVER, MAIL_FILE, path);
  NSFDbOpenExtended(path, 0, 0, NULL, &db, NULL, NULL);
  NSFDbReplicaInfoGet(db, &replica);
  NSFDbInfoGet(db, info);
  NSFDbInfoParse(info, INFOPARSE_TITLE, title, sizeof title);
  NSFDbClose(db);
  NSFDbOpen("QBConf.nsf", &db);
  search(db, "SELECT @LowerCase(Form) = \"qbprofile\" & REPLICAID=\"5A5A5A5A5A5A5A5A\"", collect);
  NSFDbClose(db);
}

#define SHOWN_PERSON                                                                         \
  "\r\n\t\tDIRECTORY ENTRY:\r\n\t\tType............: Person\r\n\t\tReplicaId.......: "       \
  "5A5A5A5A5A5A5A5A\r\n\t\tServer name.....: " SERVER "\r\n\t\tFilepath........: " MAIL_FILE \
  "\r\n\t\tName............: " NAME "\r\n\t\tFull name.......: " NAME NAME                   \
  "\r\n\t\tStatus..........: \r\n\t\tReady for import: Yes"
#define SHOWN_BATCH                                                                               \
  "IMPORTING:\r\n\t\t\r\n\t\tADDRESSBOKS:\r\n\t\tComplete path (names.nsf), Port (), Server (), " \
  "File (names.nsf)\r\n\t\tMESSAGES\r\n\r\n\t\tIMPORT RESULT:50\r\n\t\tProcessed.: 50\r\n\t\t"    \
  "Failed....: 0\r\n\t\tUpdated...: 0\r\n\t\tCreated...: 0\r\n\t\tMESSAGES:"

static void run_persons(DWORD count) {
  search(1, "SELECT Type=\"Person\"", visit_person);
  for (DWORD i = 0; i < count; ++i) {
    import_person();
    if (i % batch_size == batch_size - 1) {
      write_line(sizeof SHOWN_BATCH - 1 + batch_size * (sizeof SHOWN_PERSON - 1));
    }
  }
}

static void run_updates(void) {
  collect_ids("SELECT Form=\"qbinstallationupdatenote\"");
  for (DWORD i = 0; i < found; ++i) read_note(ids[i], read_update);
  write_line(size_of_updates(found));
}

static void run_events(void) {
  collect_ids("SELECT Form=\"qbEvent\"");
  for (DWORD i = 0; i < found; ++i) {
    read_note(ids[i], read_event);
    write_line(sizeof MOMENT " [" CATEGORY "] " EVENT - 1);
  }
}

int main(int argc, char** argv) {
  if (argc < 2) return 1;
  DWORD counts[kinds] = {0};
  char numbers[32]; /* those of process and thread, which are the same on the first thread */
  head_size = line_head + (size_t)snprintf(numbers, sizeof numbers, "%d%d", getpid(), getpid());
  load(argv[1]);
  readCounts(counts);
  NotesInitExtended(argc, argv);
  file = open("bare.log", O_WRONLY | O_CREAT | O_TRUNC, 0666);
  const size_t most = 100000 + size_of_filters(counts[filters]) + size_of_updates(counts[updates]);
  bytes = malloc(most);
  memset(bytes, 'x', most);
  ids = malloc(sizeof *ids * (counts[events] + counts[updates] + 1U));
  run_filters(counts[filters]);
  run_persons(counts[persons]);
  run_updates();
  run_events();
  NotesTerm();
  return 0;
}
