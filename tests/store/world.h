// A data directory with one database, and the library on it as a caller sees it.
#pragma once

#include <string>
#include <vector>

#include "standin/server.h"

namespace store_tests {

using standin_tests::initialise;
using standin_tests::library;
using standin_tests::wordsOf;

inline const std::string noError = "No error";

/// The first line of every database here.
inline const std::string header = R"({"database":{"title":"Sample","replica":"852564F2007E1A3B"}})"
                                  "\n";

/// The line of a note with these items, given as the inside of a JSON object.
std::string noteLine(NOTEID id, const std::string& items);

/// The current folder is the data directory, with the database a.nsf of these bytes in it. The
/// library is initialised and ends with the object.
class World : public standin_tests::Server {
 public:
  explicit World(const std::string& content = header, const std::string& settings = "");
};

/// Ends the library and starts it again: what it finds then, it has read from the files.
void restart();

/// The words of an attempt to open a database; closes it again.
std::string tryOpen(const std::string& path = "a.nsf");

/// Each of these expects success.
DBHANDLE openDatabase(const std::string& path = "a.nsf");
NOTEHANDLE openNote(DBHANDLE db, NOTEID id);
NOTEHANDLE createNote(DBHANDLE db);
FORMULAHANDLE compile(const std::string& formula);

STATUS setText(NOTEHANDLE note, const char* item, const std::string& text);

/// The text of an item, however long it is.
std::string textOf(NOTEHANDLE note, const char* item);

/// The ids that a search delivers, with blanks between them; or the words of what failed.
std::string found(DBHANDLE db, const std::string& formula = "SELECT @All");

/// What found gives for the database when it is opened anew.
std::string foundIn(const std::string& path = "a.nsf");

/// Writes a note with one text item and gives the words.
std::string write(DBHANDLE db, const std::string& text);

/// This test program, which a test may start as a second process in the current folder. With the
/// arguments "append", count and name it writes that many notes, the item `text` of each the name
/// and a number from 0. With "until-killed", microseconds and bytes it ends itself in the middle of
/// its work: so long after the first note, and when the file has then grown by so much. It prints
/// one line for each note that is written.
const std::string& ownProgram();

/// What "until-killed" writes: notes with this text under each of these names.
inline const std::string longText(60000, 'x');
inline const std::vector<const char*> longItems = {"a", "b", "c", "d", "e", "f"};

}  // namespace store_tests
