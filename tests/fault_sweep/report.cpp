#include "fault_sweep/report.h"

#include <algorithm>
#include <regex>
#include <sstream>

namespace test {
namespace {

std::string masked(std::string text) {
  static const std::pair<std::regex, const char*> masks[] = {
      {std::regex("\r"), ""},
      {std::regex("\\d\\d-\\d\\d-\\d{4} \\d\\d:\\d\\d:\\d\\d\t\\(\\d+:\\d+\\)\t\n*\t*"), "* "},
      {std::regex("\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d"), "<time>"},
      {std::regex("TESTLOGFILE-\\d{14}"), "TESTLOGFILE-<time>"},
      {std::regex("(IMPORT RESULT:|Processed\\.: )\\d+"), "$1<number>"}};
  for (const auto& [pattern, mask] : masks) text = std::regex_replace(text, pattern, mask);
  return text;
}

}  // namespace

std::vector<std::string> reportLines(const std::string& report) {
  std::vector<std::string> lines;
  std::istringstream text(masked(report));
  for (std::string line; std::getline(text, line);) lines.push_back(line);
  return lines;
}

Difference difference(const std::vector<std::string>& before,
                      const std::vector<std::string>& after) {
  // common[i][j] is the most lines that the rests behind i and j have in common.
  std::vector<std::vector<std::size_t>> common(before.size() + 1,
                                               std::vector<std::size_t>(after.size() + 1));
  for (std::size_t i = before.size(); i-- > 0;) {
    for (std::size_t j = after.size(); j-- > 0;) {
      common[i][j] = before[i] == after[j] ? common[i + 1][j + 1] + 1
                                           : std::max(common[i + 1][j], common[i][j + 1]);
    }
  }
  Difference result;
  std::size_t i = 0;
  std::size_t j = 0;
  while (i < before.size() || j < after.size()) {
    if (i < before.size() && j < after.size() && before[i] == after[j]) {
      ++i;
      ++j;
    } else if (j == after.size() || (i < before.size() && common[i + 1][j] >= common[i][j + 1])) {
      result.lost.push_back({i, before[i]});
      ++i;
    } else {
      result.gained.push_back({i, after[j]});
      ++j;
    }
  }
  return result;
}

}  // namespace test
