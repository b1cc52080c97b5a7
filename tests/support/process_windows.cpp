#include <windows.h>

#include <cstdlib>

#include "support/process.h"
#include "support/temporary_folder.h"

namespace test {

ProcessResult runProcess(const std::vector<std::string>& command, const std::string& outputFile) {
  std::string line;
  for (const std::string& word : command) line += "\"" + word + "\" ";
  // The command interpreter takes one pair of quotes away from a line that begins with one.
  const int status = std::system(("\"" + line + ">\"" + outputFile + "\" 2>nul\"").c_str());
  return {status, contentOf(outputFile)};
}

// An orderly end waits for locks that another thread may hold.
void killSelf() {
  TerminateProcess(GetCurrentProcess(), killedStatus);
  std::abort();
}

}  // namespace test
