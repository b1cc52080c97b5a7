#include "offline/programs.h"

#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <iostream>
#include <system_error>

#include "offline/messages.h"

namespace offline {

namespace fs = std::filesystem;

Programs findPrograms() {
  const fs::path folder = fs::read_symlink("/proc/self/exe").parent_path();
  Programs programs = {folder / "qbdiagnostics", folder / "standin/nnotes.dll"};
  if (!fs::exists(programs.library))
    programs.library = folder.parent_path() / "lib/qbdiagnostics/standin/nnotes.dll";
  for (const fs::path& file : {programs.diagnostics, programs.library}) {
    if (!fs::exists(file)) throw Failed("a part of this program is missing: " + file.string());
  }
  return programs;
}

int runProgram(std::vector<std::string> command) {
  constexpr int cannotRun = 127;  // as the shell has it
  std::vector<char*> arguments;
  arguments.reserve(command.size() + 1);
  for (std::string& word : command) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  std::cout.flush();

  const pid_t parent = getpid();
  const pid_t child = fork();
  if (child < 0) throw std::system_error(errno, std::generic_category(), command[0]);
  if (child == 0) {
    // Whatever ends this process ends the program with it.
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() == parent) execv(arguments[0], arguments.data());
    std::perror(arguments[0]);
    _exit(cannotRun);
  }
  int status = 0;
  while (waitpid(child, &status, 0) < 0) {
    if (errno != EINTR) throw std::system_error(errno, std::generic_category(), command[0]);
  }
  constexpr int signalled = 128;
  return WIFEXITED(status) ? WEXITSTATUS(status) : signalled + WTERMSIG(status);
}

}  // namespace offline
