// What the program asks of the Notes library again and again: the words of a status, what a
// database is, moments from a fixed text form, notes.ini variables and the two directories.
//
// No operation keeps state. A failure carries the library's words and never the status number.
#pragma once

#include <string>

#include "base/error.h"
#include "notes/abi.h"

namespace notes::DominoApiTools {

/// A replica id that cannot be read.
class DominoApiToolsError : public base::Error {
 public:
  using Error::Error;
};

/// A status that an operation of the library answered.
class DominoApiError : public base::Error {
 public:
  using Error::Error;
};

/// The library's words for a status; its two flag bits do not count.
std::u16string errorText(STATUS status);
std::string errorTextNarrow(STATUS status);

/// The replica id of an open database: sixteen upper-case hexadecimal digits, the high word first.
/// Raises DominoApiToolsError.
std::u16string replicaId(DBHANDLE db);

/// The title of an open database. Raises DominoApiError with the library's words alone.
std::u16string databaseTitle(DBHANDLE db);

/// The replica id of the server's directory, "names.nsf". Raises DominoApiToolsError.
std::u16string directoryReplicaId();

/// The moment that a text of the form "2012-05-30 14:07:00" tells in local time, whatever the
/// server's own settings are. Raises DominoApiError.
void timeDateFromText(const std::string& text, TIMEDATE& time);

/// The parts of a moment in the server's local time. Raises DominoApiError.
TIME timeToParts(const TIMEDATE& time);

/// Read a notes.ini variable, cut to 255 bytes. False if there is none of that name; the value is
/// then what the library leaves, which is nothing.
bool readEnvironment(const std::string& name, std::string& value);
bool readEnvironmentWide(const std::string& name, std::u16string& value);

/// The Notes data directory, without a closing separator.
std::u16string dataDirectory();

/// The Domino program directory, with a closing separator.
std::u16string executableDirectory();

}  // namespace notes::DominoApiTools
