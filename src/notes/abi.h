/* The binary interface of the Notes library: its scalars, its records and the forty operations.
 *
 * This is the one header that the program shares with the stand-in library, and it is C as well as
 * C++. It declares no function: NOTES_OPERATIONS is the single list from which the program makes
 * its table, its loader and the names it calls, and the stand-in its exports.
 *
 * NOTES_CALL is the calling convention of the operations and of the search callback. The build
 * defines it as __stdcall for 32-bit Windows; elsewhere there is one convention only. */
#ifndef NOTES_ABI_H
#define NOTES_ABI_H

#include <assert.h>
#include <stdint.h>

#ifndef NOTES_CALL
#define NOTES_CALL
#endif

typedef uint8_t BYTE;
typedef uint16_t WORD;
typedef uint32_t DWORD;
typedef int32_t BOOL;
typedef WORD STATUS;
typedef DWORD HANDLE;
typedef DWORD DBHANDLE;
typedef DWORD NOTEHANDLE;
typedef DWORD FORMULAHANDLE;
typedef DWORD NOTEID;
typedef double NUMBER;

#pragma pack(push, 1)

/* A moment: hundredths of a second since midnight GMT, and in the low 24 bits of the second word
 * the Julian day number. Only the library looks inside. */
typedef struct {
  DWORD Innards[2];
} TIMEDATE;

typedef struct {
  int32_t year;
  int32_t month;
  int32_t day;
  int32_t weekday;
  int32_t hour;
  int32_t minute;
  int32_t second;
  int32_t hundredth;
  int32_t dst;
  int32_t zone;
  TIMEDATE GM;
} TIME;

typedef struct {
  BYTE Date;
  BYTE Time;
  BYTE Zone;
  BYTE Structure;
} TFMT;

typedef struct {
  WORD Flags;
  BYTE CurrencyDigits;
  BYTE Length;
  int16_t TimeZone;
  char AMString[5];
  char PMString[5];
  char CurrencyString[5];
  char ThousandString[5];
  char DecimalString[5];
  char DateString[5];
  char TimeString[5];
  char YesterdayString[32];
  char TodayString[32];
  char TomorrowString[32];
  BYTE Reserved[2];
} INTLFORMAT;

typedef struct {
  TIMEDATE ID;
  WORD Flags;
  WORD CutoffInterval;
  TIMEDATE Cutoff;
} DBREPLICAINFO;

typedef struct {
  TIMEDATE File;
  TIMEDATE Note;
  DWORD NoteID;
} GLOBAL_INSTANCE_ID;

typedef struct {
  GLOBAL_INSTANCE_ID ID;
  BYTE OriginatorID[28];
  WORD NoteClass;
  BYTE MatchFlags;
  BYTE Privileges;
  WORD SummaryLength;
} SEARCH_MATCH;

#pragma pack(pop)

static_assert(sizeof(TIMEDATE) == 8, "layout of TIMEDATE");
static_assert(sizeof(TIME) == 48, "layout of TIME");
static_assert(sizeof(TFMT) == 4, "layout of TFMT");
static_assert(sizeof(INTLFORMAT) == 139, "layout of INTLFORMAT");
static_assert(sizeof(DBREPLICAINFO) == 20, "layout of DBREPLICAINFO");
static_assert(sizeof(SEARCH_MATCH) == 54, "layout of SEARCH_MATCH");

/* Called by NSFSearch for each match; a result other than 0 ends the search. */
typedef STATUS(NOTES_CALL* NSFSEARCHPROC)(void* context, SEARCH_MATCH* match, void* summary);

/* Sizes of the buffers that a caller provides, in bytes, the closing zero included. */
enum {
  NOTES_PATH_SIZE = 256,        /* every path, directory, port, server and file */
  NOTES_ENVIRONMENT_SIZE = 256, /* the value of a notes.ini variable */
  NOTES_ERROR_TEXT_SIZE = 200,  /* the words of a status */
  NOTES_ITEM_TEXT_SIZE = 1024,  /* a text item or an entry of a text list */
  NOTES_TIME_TEXT_SIZE = 80,    /* the text form of a time */
  NOTES_DBINFO_SIZE = 128,      /* the information buffer of a database */
  NOTES_TITLE_SIZE = 127        /* the title of a database */
};

/* The low 14 bits of a STATUS are the code that has words; the others are flags. */
enum { NOTES_ERROR_MASK = 0x3FFF };

/* Item type codes. */
enum { TYPE_NUMBER = 0x0300, TYPE_TIME = 0x0400, TYPE_TEXT = 0x0500, TYPE_TEXT_LIST = 0x0501 };

/* The class of ordinary documents, and the part of the information buffer that is the title. */
enum { NOTE_CLASS_DATA = 1, INFOPARSE_TITLE = 0 };

/* Bits of INTLFORMAT.Flags. */
enum { NUMBER_LEADING_ZERO = 0x04, CLOCK_24_HOUR = 0x08, DATE_YMD = 0x80 };

/* The operations, as X(result, name, arguments). */
/* clang-format off */
#define NOTES_OPERATIONS(X) \
  X(STATUS, NotesInitExtended, (int argc, char** argv)) \
  X(void, NotesTerm, (void)) \
  X(WORD, OSLoadString, (void* module, STATUS code, char* buffer, WORD size)) \
  X(BOOL, OSGetEnvironmentString, (const char* name, char* value, WORD size)) \
  X(WORD, OSGetDataDirectory, (char* path)) \
  X(void, OSGetExecutableDirectory, (char* path)) \
  X(STATUS, OSPathNetConstruct, (const char* port, const char* server, const char* file, char* path)) \
  X(STATUS, OSPathNetParse, (const char* path, char* port, char* server, char* file)) \
  X(void, OSCurrentTIMEDATE, (TIMEDATE* now)) \
  X(void, OSGetIntlSettings, (INTLFORMAT* settings, WORD size)) \
  X(STATUS, ConvertTextToTIMEDATE, (const INTLFORMAT* settings, const TFMT* format, char** text, WORD maximum_length, TIMEDATE* time)) \
  X(BOOL, TimeGMToLocal, (TIME* time)) \
  X(void*, OSLockObject, (HANDLE block)) \
  X(BOOL, OSUnlockObject, (HANDLE block)) \
  X(STATUS, OSMemFree, (HANDLE block)) \
  X(STATUS, NSFDbOpen, (const char* path, DBHANDLE* db)) \
  X(STATUS, NSFDbOpenExtended, (const char* path, WORD options, HANDLE names, TIMEDATE* modified, DBHANDLE* db, TIMEDATE* data_modified, TIMEDATE* non_data_modified)) \
  X(STATUS, NSFDbClose, (DBHANDLE db)) \
  X(STATUS, NSFDbInfoGet, (DBHANDLE db, char* info)) \
  X(void, NSFDbInfoParse, (char* info, WORD what, char* buffer, WORD size)) \
  X(STATUS, NSFDbReplicaInfoGet, (DBHANDLE db, DBREPLICAINFO* info)) \
  X(STATUS, NSFNoteCreate, (DBHANDLE db, NOTEHANDLE* note)) \
  X(STATUS, NSFNoteOpen, (DBHANDLE db, NOTEID id, WORD flags, NOTEHANDLE* note)) \
  X(STATUS, NSFNoteUpdate, (NOTEHANDLE note, WORD flags)) \
  X(STATUS, NSFNoteClose, (NOTEHANDLE note)) \
  X(STATUS, NSFProfileOpen, (DBHANDLE db, const char* profile, WORD profile_length, const char* user, WORD user_length, BOOL copy_profile, NOTEHANDLE* note)) \
  X(STATUS, NSFProfileUpdate, (NOTEHANDLE note, const char* profile, WORD profile_length, const char* user, WORD user_length)) \
  X(STATUS, NSFItemInfo, (NOTEHANDLE note, const char* item, WORD item_length, void* item_block, WORD* data_type, void* value_block, DWORD* value_length)) \
  X(WORD, NSFItemGetText, (NOTEHANDLE note, const char* item, char* buffer, WORD size)) \
  X(WORD, NSFItemGetTextListEntries, (NOTEHANDLE note, const char* item)) \
  X(WORD, NSFItemGetTextListEntry, (NOTEHANDLE note, const char* item, WORD index, char* buffer, WORD size)) \
  X(BOOL, NSFItemGetTime, (NOTEHANDLE note, const char* item, TIMEDATE* time)) \
  X(BOOL, NSFItemGetNumber, (NOTEHANDLE note, const char* item, NUMBER* number)) \
  X(WORD, NSFItemConvertToText, (NOTEHANDLE note, const char* item, char* buffer, WORD size, char separator)) \
  X(STATUS, NSFItemSetText, (NOTEHANDLE note, const char* item, const char* text, WORD length)) \
  X(STATUS, NSFItemSetTime, (NOTEHANDLE note, const char* item, const TIMEDATE* time)) \
  X(STATUS, NSFItemSetNumber, (NOTEHANDLE note, const char* item, const NUMBER* number)) \
  X(STATUS, NSFFormulaCompile, (const char* name, WORD name_length, const char* formula, WORD formula_length, FORMULAHANDLE* handle, WORD* compiled_length, STATUS* error, WORD* line, WORD* column, WORD* offset, WORD* error_length)) \
  X(STATUS, NSFSearch, (DBHANDLE db, FORMULAHANDLE formula, const char* view_title, WORD flags, WORD note_class, TIMEDATE* since, NSFSEARCHPROC callback, void* context, TIMEDATE* until)) \
  X(STATUS, NAMEGetAddressBooks, (const char* server, WORD options, WORD* count, WORD* length, HANDLE* block))
/* clang-format on */

#endif
