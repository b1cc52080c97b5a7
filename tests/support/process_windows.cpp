#include <windows.h>

#include <cstdlib>

#include "support/process.h"
#include "support/temporary_folder.h"

namespace test {
namespace {

// Puts this process into a job that ends with it, and the programs that it starts too: a test that
// is killed takes them with it.
bool joinJob() {
  JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
  limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
  const HANDLE job = CreateJobObjectA(nullptr, nullptr);
  return SetInformationJobObject(job, JobObjectExtendedLimitInformation, &limits, sizeof limits) &&
         AssignProcessToJobObject(job, GetCurrentProcess());
}

}  // namespace

ProcessResult runProcess(const std::vector<std::string>& command, const std::string& outputFile) {
  [[maybe_unused]] static const bool isInJob = joinJob();
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
