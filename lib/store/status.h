// What this library answers when a call cannot be done.
//
// Words stand behind a prefix and mostly before a full stop, so they end without one.
// STORE_STATUSES is the only place that tells numbers and words.
#pragma once

#include <cstdint>
#include <exception>
#include <string>
#include <string_view>
#include <utility>

// X(name, code, words); the words fit in 255 bytes.
/* clang-format off */
#define STORE_STATUSES(X) \
  X(success, 0x0000, "No error") \
  X(outOfMemory, 0x0101, "The library has run out of memory") \
  X(internalError, 0x0102, "The library failed unexpectedly") \
  X(missingArgument, 0x0103, "A call lacks an argument that it needs") \
  X(notInitialised, 0x0201, "The library is not initialised") \
  X(alreadyInitialised, 0x0202, "The library is initialised already") \
  X(settingsUnreadable, 0x0203, "The file notes.ini cannot be found or read") \
  X(noDataDirectory, 0x0204, "The file notes.ini has no variable Directory") \
  X(wrongTimezone, 0x0205, "The variable Timezone in notes.ini is not a whole number from -23 to 23") \
  X(settingsNoFile, 0x0206, "The path of notes.ini leads to something that is not a file") \
  X(settingsLinkLoop, 0x0207, "The links in the path of notes.ini lead around in a circle") \
  X(settingsPathTooLong, 0x0208, "The path of notes.ini is longer than the system takes") \
  X(settingsWide, 0x0209, "The file notes.ini is UTF-16 or UTF-32, which the library does not read") \
  X(dataDirectoryTooLong, 0x020A, "The data directory has more than 255 bytes") \
  X(programDirectoryTooLong, 0x020B, "The program directory has more than 255 bytes, its last separator included") \
  X(wrongLockWait, 0x020C, "The variable LockWait in notes.ini is not a whole number from 0 to 3600000") \
  X(pathTooLong, 0x0301, "The path has more than 255 bytes") \
  X(pathPartTooLong, 0x0302, "The port, the server or the file of the path has more than 255 bytes") \
  X(unknownServer, 0x0303, "The remote server is not a known host") \
  X(addressBooksTooLong, 0x0304, "The list of address books is too long") \
  X(notATime, 0x0401, "The text is not a date and a time of day") \
  X(impossibleTime, 0x0402, "There is no such date or time of day") \
  X(unknownTimeFormat, 0x0403, "The library reads times only as date and time of day with all their parts") \
  X(unknownBlock, 0x0501, "The handle is not that of a memory block") \
  X(databaseMissing, 0x0601, "The database does not exist") \
  X(databaseIsNoFile, 0x0602, "The path of the database leads to something that is not a file") \
  X(databaseUnreadable, 0x0603, "The system does not let the library read the database") \
  X(databaseUnwritable, 0x0604, "The system does not let the library write to the database") \
  X(foreignFile, 0x0605, "The file is not a store of this library") \
  X(lineDamaged, 0x0606, "A line of the database is damaged") \
  X(noIdsLeft, 0x0607, "The database has given out its last note id") \
  X(unknownDatabase, 0x0608, "The handle is not that of an open database") \
  X(databaseLinkLoop, 0x0609, "The links in the path of the database lead around in a circle") \
  X(databasePathTooLong, 0x060A, "The path of the database is longer than the system takes") \
  X(databaseLocked, 0x060B, "Another process holds the lock of the database") \
  X(tornNotKept, 0x060C, "What an interrupted write left in the database cannot be kept in a file beside it") \
  X(noSuchNote, 0x0701, "There is no such note in the database") \
  X(unknownNote, 0x0702, "The handle is not that of an open note") \
  X(databaseOfNoteClosed, 0x0703, "The database of the note is closed") \
  X(noteIsProfile, 0x0704, "A profile note is written only by the operation for profiles") \
  X(noteIsNoProfile, 0x0705, "The note is not a profile note") \
  X(noProfileName, 0x0706, "A profile needs a name") \
  X(noSuchItem, 0x0707, "There is no such item in the note") \
  X(wrongItemName, 0x0708, "The name of an item is UTF-8 and not empty") \
  X(noFiniteNumber, 0x0709, "An item cannot hold a number that is not finite") \
  X(unknownFormula, 0x0801, "The handle is not that of a compiled formula") \
  X(noSelect, 0x0802, "The formula does not begin with SELECT") \
  X(unexpectedText, 0x0804, "The formula has something that the library does not understand") \
  X(textNotClosed, 0x0805, "A text in the formula has no closing quotation mark") \
  X(formulaEnds, 0x0809, "The formula ends before it is complete") \
  X(unknownSearch, 0x080A, "The library searches documents only, and without flags or a time to begin at")
/* clang-format on */

namespace store {

enum class Status : std::uint16_t {
#define STORE_ENUMERATOR(name, code, words) name = code,
  STORE_STATUSES(STORE_ENUMERATOR)
#undef STORE_ENUMERATOR
};

class Failure : public std::exception {
 public:
  explicit Failure(Status status, std::string words = {})
      : status_(status), words_(std::move(words)) {}

  Status status() const { return status_; }

  /// The words of its own, which leave the object; mostly there are none.
  std::string takeWords() noexcept { return std::move(words_); }

 private:
  Status status_;
  std::string words_;
};

/// The words of a status; empty for a code that this library never gives out.
std::string_view wordsOf(std::uint16_t code);

}  // namespace store
