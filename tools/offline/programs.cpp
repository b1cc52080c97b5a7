#include "offline/programs.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
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
  std::vector<char*> arguments;
  arguments.reserve(command.size() + 1);
  for (std::string& word : command) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  std::cout.flush();

  pid_t child = 0;
  const int error = posix_spawn(&child, arguments[0], nullptr, nullptr, arguments.data(), environ);
  if (error != 0) throw std::system_error(error, std::generic_category(), command[0]);
  int status = 0;
  while (waitpid(child, &status, 0) < 0) {
    if (errno != EINTR) throw std::system_error(errno, std::generic_category(), command[0]);
  }
  constexpr int signalled = 128;
  return WIFEXITED(status) ? WEXITSTATUS(status) : signalled + WTERMSIG(status);
}

}  // namespace offline
