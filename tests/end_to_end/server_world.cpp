#include "end_to_end/server_world.h"

#include <regex>

namespace test {
namespace {

namespace fs = std::filesystem;

const std::string programFile = BINARY_FOLDER "/" PROGRAM_NAME;

void replaceAll(std::string& text, const std::string& pattern, const std::string& replacement) {
  for (std::size_t at = 0; (at = text.find(pattern, at)) != std::string::npos;
       at += replacement.size()) {
    text.replace(at, pattern.size(), replacement);
  }
}

}  // namespace

ServerWorld::ServerWorld() {
  fs::copy(SOURCE_FOLDER "/sample-server", folder_.path(), fs::copy_options::recursive);
  fs::copy(BINARY_FOLDER "/standin/nnotes.dll", program() / "nnotes.dll");
  std::string settings = contentOf(program() / "notes.ini");
  replaceAll(settings, "@SERVER@", root());
  writeFile(program() / "notes.ini", settings);
}

void ServerWorld::setNotesIni(const std::string& lines) const {
  writeFile(program() / "notes.ini", "[Notes]\nNotesProgram=" + root() +
                                         "/program\nDirectory=" + root() + "/data\n" + lines);
}

ProcessResult ServerWorld::run(const std::vector<std::string>& arguments) const {
  std::vector<std::string> all = {root() + "/program"};
  all.insert(all.end(), arguments.begin(), arguments.end());
  return runProgram(all, folder_);
}

std::string ServerWorld::report() const {
  return contentOf(onlyFile(data() / "Quellbright", "Quellbright-DIAGNOSTIC-"));
}

ProcessResult runProgram(const std::vector<std::string>& arguments, const TemporaryFolder& folder) {
  std::vector<std::string> command = {programFile};
  command.insert(command.end(), arguments.begin(), arguments.end());
  return runProcess(command, folder.text() + "/console.txt");
}

std::string masked(std::string text, const std::string& root) {
  replaceAll(text, root, "<server>");
  replaceAll(text, "\r\n", "\n");
  text =
      std::regex_replace(text, std::regex("\\d\\d-\\d\\d-\\d{4} \\d\\d:\\d\\d:\\d\\d"), "<time>");
  // The events that the run itself writes.
  text = std::regex_replace(
      text,
      std::regex("\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d( \\[[^\\]]*\\] This is a testmessage)"),
      "<time>$1");
  text = std::regex_replace(text, std::regex("\t\\(\\d+:\\d+\\)\t"), "\t(<numbers>)\t");
  return std::regex_replace(text, std::regex("(DIAGNOSTIC|TESTLOGFILE)-\\d{14}\\.log"),
                            "$1-<time>.log");
}

}  // namespace test
