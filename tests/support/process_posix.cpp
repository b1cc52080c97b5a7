#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>

#include "support/process.h"
#include "support/temporary_folder.h"

namespace test {

ProcessResult runProcess(const std::vector<std::string>& command, const std::string& outputFile) {
  // A test that is killed takes the program with it.
  std::string line = "exec setpriv --pdeathsig KILL ";
  for (const std::string& word : command) line += "'" + word + "' ";
  const int status = std::system((line + ">'" + outputFile + "' 2>/dev/null").c_str());
  return {WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status), contentOf(outputFile)};
}

void killSelf() {
  ::kill(::getpid(), SIGKILL);
  std::abort();
}

}  // namespace test
