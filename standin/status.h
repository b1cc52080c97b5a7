// What this library answers when a call cannot be done.
//
// To a caller a status is a number, whose words OSLoadString gives. Callers put the words behind a
// prefix and mostly before a full stop of their own, so the words end without one.
// STANDIN_STATUSES is the only place that tells numbers and words. Inside the library a call that
// cannot be done throws Failure; guard.h makes the number of it at the boundary.
#pragma once

#include <exception>
#include <string>

#include "notes/abi.h"

// X(name, code, words); the words fit in NOTES_ERROR_TEXT_SIZE bytes.
/* clang-format off */
#define STANDIN_STATUSES(X) \
  X(success, 0x0000, "No error") \
  X(outOfMemory, 0x0101, "The library has run out of memory") \
  X(internalError, 0x0102, "The library failed unexpectedly") \
  X(missingArgument, 0x0103, "A call lacks an argument that it needs") \
  X(notInitialised, 0x0201, "The library is not initialised") \
  X(alreadyInitialised, 0x0202, "The library is initialised already") \
  X(settingsUnreadable, 0x0203, "The file notes.ini cannot be found or read") \
  X(noDataDirectory, 0x0204, "The file notes.ini has no variable Directory") \
  X(wrongTimezone, 0x0205, "The variable Timezone in notes.ini is not a whole number from -23 to 23") \
  X(pathTooLong, 0x0301, "The path has more than 255 bytes") \
  X(pathPartTooLong, 0x0302, "The port, the server or the file of the path has more than 255 bytes") \
  X(unknownServer, 0x0303, "The remote server is not a known host") \
  X(addressBooksTooLong, 0x0304, "The list of address books is too long") \
  X(notATime, 0x0401, "The text is not a date and a time of day") \
  X(impossibleTime, 0x0402, "There is no such date or time of day") \
  X(unknownTimeFormat, 0x0403, "The library reads times only as date and time of day with all their parts") \
  X(unknownBlock, 0x0501, "The handle is not that of a memory block") \
  X(noDocuments, 0x0601, "This build of the library holds no documents")
/* clang-format on */

namespace standin {

enum class Status : STATUS {
#define STANDIN_ENUMERATOR(name, code, words) name = code,
  STANDIN_STATUSES(STANDIN_ENUMERATOR)
#undef STANDIN_ENUMERATOR
};

class Failure : public std::exception {
 public:
  explicit Failure(Status status) : status_(status) {}
  Status status() const { return status_; }

 private:
  Status status_;
};

/// The words of any status, its flag bits ignored; also of one that this library never gives out.
std::string wordsOf(STATUS status);

}  // namespace standin
