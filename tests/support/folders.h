// Where a test finds what it is not made of. This file's source alone knows the folders: whatever
// else is compiled is the same wherever the checkout lies.
#pragma once

#include <string>

namespace test {

/// A path within the repository, as "tests/worlds".
std::string inRepository(const std::string& path);

/// A path within this build.
std::string inBuild(const std::string& path);

/// The programs and the stand-in library of this build, or of the one that the environment's
/// PROGRAMS names.
std::string builtProgram(const std::string& name);
std::string builtStandIn();

}  // namespace test
