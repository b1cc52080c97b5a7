// The loaded stand-in library as a caller sees it, and a folder for it to run in.
#pragma once

#include <filesystem>
#include <string>

#include "notes/api.h"
#include "support/temporary_folder.h"

namespace standin_tests {

using namespace notes;

inline const std::string noError = "No error";

/// The first line of every database here.
inline const std::string header = R"({"database":{"title":"Sample","replica":"852564F2007E1A3B"}})"
                                  "\n";

/// The line of a note with these items, given as the inside of a JSON object.
std::string noteLine(NOTEID id, const std::string& items = "");

std::string wordsOf(STATUS status);

/// NotesInitExtended with these arguments behind the program's name. Gives the words of the status.
std::string initialise(std::string first = "", std::string second = "");

/// The current folder and data directory, while the object lives, with the database a.nsf of these
/// bytes in it, and the library running there.
class Server {
 public:
  explicit Server(const std::string& database = header, const std::string& settings = "");
  Server(const Server&) = delete;
  Server& operator=(const Server&) = delete;
  ~Server();

 private:
  test::TemporaryFolder folder_;
  std::filesystem::path before_ = std::filesystem::current_path();
};

/// Each of these expects success.
DBHANDLE openDatabase(const std::string& path = "a.nsf");
NOTEHANDLE openNote(DBHANDLE db, NOTEID id);
FORMULAHANDLE compile(const std::string& formula);

STATUS setText(NOTEHANDLE note, const std::string& item, const std::string& text);

/// The text of an item, however long it is.
std::string textOf(NOTEHANDLE note, const std::string& item);

/// The ids that a search delivers, with blanks between them.
std::string found(DBHANDLE db, const std::string& formula = "SELECT @All");

/// What `found` gives for a database that is opened anew, or the words of why it does not open.
std::string foundIn(const std::string& path = "a.nsf");

/// Writes a note with one item, `text`, and gives the words.
std::string write(DBHANDLE db, const std::string& text);

}  // namespace standin_tests
