// The loaded stand-in library, and a folder with a notes.ini for it to run in.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "library_table.h"
#include "support/temporary_folder.h"

namespace standin_tests {

/// The library of this build, loaded at the first call.
const LibraryTable& library();

std::string wordsOf(STATUS status);

/// NotesInitExtended with these arguments behind the program's name. Gives the words of the status.
std::string initialise(std::vector<std::string> arguments = {});

/// A folder that is the current one while the object lives, with this notes.ini. Ends the library.
class Server {
 public:
  explicit Server(const std::string& settings);
  Server(const Server&) = delete;
  Server& operator=(const Server&) = delete;
  ~Server();

 private:
  test::TemporaryFolder folder_;
  std::filesystem::path before_;
};

/// A server whose notes.ini has a directory and `settings`, with the library initialised.
class RunningServer : public Server {
 public:
  explicit RunningServer(const std::string& settings = "");
};

}  // namespace standin_tests
