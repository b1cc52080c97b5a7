// A Domino server of a test's own, and runs of the built program against it.
#pragma once

#include <string>
#include <vector>

#include "support/process.h"
#include "support/temporary_folder.h"

namespace test {

class ServerWorld {
 public:
  /// A copy of the sample server with the stand-in as its Notes library.
  ServerWorld();

  /// The folder of the server, with slashes.
  std::string root() const { return folder_.text(); }
  std::filesystem::path program() const { return folder_.path() / "program"; }
  std::filesystem::path data() const { return folder_.path() / "data"; }

  /// Writes notes.ini anew: the two directories, and `lines` behind them.
  void setNotesIni(const std::string& lines) const;

  /// Runs the program with this server's program directory and `arguments` behind it.
  ProcessResult run(const std::vector<std::string>& arguments = {}) const;

  /// The report of the one run so far, as bytes; empty if there is not exactly one.
  std::string report() const;

 private:
  TemporaryFolder folder_;
};

/// Runs the program with the arguments as they stand.
ProcessResult runProgram(const std::vector<std::string>& arguments, const TemporaryFolder& folder);

/// `text` with all that differs from run to run replaced: the server's folder, time stamps, process
/// and thread numbers. CR LF becomes a line feed.
std::string masked(std::string text, const std::string& root);

}  // namespace test
