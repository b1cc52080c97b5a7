#include "report/tool_texts.h"

#include <algorithm>
#include <array>

#include "report/lines.h"

namespace reader {
namespace {

constexpr std::array testEventTexts = {
    std::string_view("This is a testmessage in the NABImport-category."),
    std::string_view("This is a testmessage in the softwareupdate-category."),
    std::string_view("This is a testmessage in the Usersync-category.")};

constexpr std::array checkedFiles = {
    std::string_view("qbse.dll"),     std::string_view("qbsg.dll"),
    std::string_view("nqbschd.exe"),  std::string_view("qbsmtp.dll"),
    std::string_view("qbrouter.dll"), std::string_view("QBConf.nsf"),
    std::string_view("QBConf002.ntf")};

constexpr std::string_view testFilePrefix = "Quellbright-TESTLOGFILE-";
constexpr std::string_view testFileEnding = ".log";
constexpr std::size_t timeSize = 14;

// The size of the tool's own file name at the end of a path; 0 if there is none.
std::size_t sizeOfOwnName(std::string_view path) {
  for (const std::string_view name : checkedFiles) {
    if (path.ends_with(name)) return name.size();
  }
  const std::string_view time = timeOfTestFile(path);
  if (time.empty() ||
      time.data() + time.size() + testFileEnding.size() != path.data() + path.size())
    return 0;
  return testFilePrefix.size() + timeSize + testFileEnding.size();
}

}  // namespace

bool isTestEventText(std::string_view text) {
  return std::ranges::find(testEventTexts, text) != testEventTexts.end();
}

std::string_view timeOfTestFile(std::string_view line) {
  const std::size_t prefix = line.rfind(testFilePrefix);
  if (prefix == std::string_view::npos) return {};
  line.remove_prefix(prefix + testFilePrefix.size());
  const std::string_view time = line.substr(0, timeSize);
  const bool isTime = time.size() == timeSize && std::ranges::all_of(time, isDigit) &&
                      line.substr(timeSize).starts_with(testFileEnding);
  return isTime ? time : std::string_view();
}

std::string_view folderOf(std::string_view path) {
  const std::size_t name = sizeOfOwnName(path);
  if (name == 0) return path;
  path.remove_suffix(name);
  while (path.ends_with('/') || path.ends_with('\\')) path.remove_suffix(1);
  return path;
}

}  // namespace reader
