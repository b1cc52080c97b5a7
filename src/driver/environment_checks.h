// The first three sections of the report: whether the add-on is wired into the server.
//
// A variable or a file that is not there is a result and not a failure. Despite its title the first
// section shows variables of the server's notes.ini; the environment of the process plays no part.
#pragma once

#include <map>
#include <string>
#include <vector>

namespace driver {

/// The notes.ini variables that the SYSTEM ENVIRONMENT section shows, in order.
std::vector<std::string> environmentNames();

/// The list variables of notes.ini, and for each the token that must stand in it.
std::map<std::string, std::string> environmentChecks();

/// The full paths of the add-on's files. The program directory ends in a separator and the data
/// directory does not, as the Notes library gives them.
std::vector<std::u16string> checkedFiles(const std::u16string& executableDirectory,
                                         const std::u16string& dataDirectory);

/// Adds the tokens of a comma-separated variable to `tokens`. Blanks are dropped wherever they
/// stand and split nothing; a variable that ends in a comma has no empty token behind it.
void splitEnvironmentValue(const std::string& name, std::vector<std::string>& tokens);

/// Whether one of the variable's tokens is `token`, case included.
bool tokenIsPresent(const std::string& name, const std::string& token);

/// The text of each section. Its lines behind the first begin with `indent` tabs, and the last has
/// no line feed.
void systemEnvironmentText(const std::vector<std::string>& names, std::string& text, int indent);
void dominoEnvironmentText(const std::map<std::string, std::string>& checks, std::string& text,
                           int indent);
void fileCheckText(const std::vector<std::u16string>& paths, std::u16string& text, int indent);

}  // namespace driver
