// A world: a server as a folder of files, on which the built program runs, with the report and the
// console that it is to show.
//
//   world.txt             comment lines that begin with "# " and tell what the world shows, and
//   lines
//                         of a word and its value:
//                           argument <text>   behind the program directory, in this order
//                           status <number>   of the exit; 1 without this line, "abnormal" for all
//                                             but 0 and 1
//                           server <folder>   of the repository, which is laid out first
//                           report <world>    whose expected report is this one's too
//                           library <file>    of the build, as the Notes library; "none" for none
//                           path <path>       in place of that of the program directory; "none" for
//                                             a run without arguments
//   program/, data/       the server's files; "@SERVER@" in a notes.ini and in an argument stands
//   for
//                         the folder that they are laid out in
//   expected/report.txt   absent where there is no report
//   expected/console.txt
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "support/temporary_folder.h"

namespace test {

using Lines = std::vector<std::string>;

/// What a run shows, without what differs from run to run.
struct Shown {
  std::string status;
  Lines console;  ///< Lines of the report among them stand as "<report FIRST-LAST>".
  Lines report;   ///< The head of an entry stands as "<entry>" and a tab.

  bool operator==(const Shown&) const = default;
};

class World {
 public:
  /// Lays the world out. Its Notes library is the file `library`, or the stand-in, unless it tells
  /// of another one or has one of its own.
  explicit World(const std::string& name, const std::string& library = "");

  /// The folder of the server, with slashes.
  std::string root() const { return folder_.text(); }
  std::filesystem::path program() const { return folder_.path() / "program"; }
  std::filesystem::path data() const { return folder_.path() / "data"; }

  /// Runs the program as the world tells.
  Shown run() const;

  /// The bytes of the report, in the add-on's folder or at the root of the server; empty if there
  /// is not exactly one.
  std::string reportBytes() const;

  /// What a report shows of its bytes.
  Lines shownReport(const std::string& bytes) const;

  /// Puts the databases back as they were and takes the logs away. Gives whether the run changed
  /// none of them, but for lines behind those of the configuration.
  bool restore() const;

  Shown expected() const;
  /// Makes what a run shows the expected.
  void renew(const Shown& shown) const;

 private:
  void layOut(const std::filesystem::path& source) const;
  /// The first value of a setting, or `otherwise`.
  std::string setting(const std::string& word, const std::string& otherwise) const;
  std::filesystem::path expectedFile(const std::string& name) const;

  std::filesystem::path source_;
  std::multimap<std::string, std::string> settings_;
  std::map<std::filesystem::path, std::string> databases_;
  TemporaryFolder folder_;
};

/// The names of all worlds, in order.
Lines worldNames();

/// Whether expected texts are to be written instead of compared: the environment names RENEW.
bool isRenewing();

/// Lines with a line feed behind each, and back.
std::string joined(const Lines& lines);
Lines linesOf(const std::string& text);

}  // namespace test
