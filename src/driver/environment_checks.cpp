#include "driver/environment_checks.h"

#include <algorithm>

#include "base/paths.h"
#include "base/text.h"
#include "notes/domino_api_tools.h"
#include "notes/nsf_db_connection.h"

namespace driver {
namespace {

namespace DominoApiTools = notes::DominoApiTools;

// What stands in front of each line of a section but the first.
std::string lineStart(int indent) {
  return "\n" + std::string(static_cast<unsigned>(indent), '\t');
}

}  // namespace

std::vector<std::string> environmentNames() {
  return {"ServerTasks",         "EXTMGR_ADDINS", "NSF_HOOKS", "NotesProgram",     "Directory",
          "FaultRecovery_Build", "ServerName",    "Names",     "vrx_use_names_nsf"};
}

std::map<std::string, std::string> environmentChecks() {
  return {{"ServerTasks", "nqbschd"}, {"EXTMGR_ADDINS", "qbsmtp.dll"}, {"NSF_HOOKS", "qbrouter"}};
}

std::vector<std::u16string> checkedFiles(const std::u16string& executableDirectory,
                                         const std::u16string& dataDirectory) {
  return {executableDirectory + u"qbse.dll",
          executableDirectory + u"qbsg.dll",
          executableDirectory + u"nqbschd.exe",
          executableDirectory + u"qbsmtp.dll",
          executableDirectory + u"qbrouter.dll",
          dataDirectory + u"\\" + notes::configurationDatabaseWide,
          dataDirectory + u"\\QBConf002.ntf"};
}

void splitEnvironmentValue(const std::string& name, std::vector<std::string>& tokens) {
  std::string value;
  if (!DominoApiTools::readEnvironment(name, value)) return;
  std::string token;
  for (std::size_t at = 0; at < value.size(); ++at) {
    const char character = value[at];
    if (character != ' ' && character != ',') token += character;
    if (character == ',' || at + 1 == value.size()) {
      tokens.push_back(token);
      token.clear();
    }
  }
}

bool tokenIsPresent(const std::string& name, const std::string& token) {
  std::vector<std::string> tokens;
  splitEnvironmentValue(name, tokens);
  return std::find(tokens.begin(), tokens.end(), token) != tokens.end();
}

void systemEnvironmentText(const std::vector<std::string>& names, std::string& text, int indent) {
  text = "SYSTEM ENVIRONMENT:";
  for (const std::string& name : names) {
    std::string value;
    DominoApiTools::readEnvironment(name, value);
    text.append(lineStart(indent)).append(name).append("=").append(value);
  }
}

void dominoEnvironmentText(const std::map<std::string, std::string>& checks, std::string& text,
                           int indent) {
  text = "DOMINO ENVIRONMENT VARIABLES:";
  for (const auto& [name, token] : checks) {
    text.append(lineStart(indent)).append(token);
    text.append(tokenIsPresent(name, token) ? " was found in " : " was not found in ");
    text.append(name).append(".");
  }
}

void fileCheckText(const std::vector<std::u16string>& paths, std::u16string& text, int indent) {
  text = u"FILE CHECK:";
  for (const std::u16string& path : paths) {
    text += base::newLine(static_cast<unsigned>(indent)) + path +
            (base::fileExists(path) ? u" was found." : u" was not found.");
  }
}

}  // namespace driver
