#include "support/folders.h"

#include <cstdlib>

namespace test {
namespace {

std::string inPrograms(const std::string& path) {
  const char* const programs = std::getenv("PROGRAMS");
  return programs == nullptr ? inBuild(path) : std::string(programs) + '/' + path;
}

}  // namespace

std::string inRepository(const std::string& path) { return SOURCE_FOLDER "/" + path; }

std::string inBuild(const std::string& path) { return BINARY_FOLDER "/" + path; }

std::string builtProgram(const std::string& name) { return inPrograms(name + PROGRAM_SUFFIX); }

std::string builtStandIn() { return inPrograms("standin/nnotes.dll"); }

}  // namespace test
