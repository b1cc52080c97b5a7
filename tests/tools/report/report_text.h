// Reports of tests in short: at the beginning of a line, or behind zero bytes there, "@" stands for
// the head of an entry, "<" for one of an earlier second, and "~" for one of another run.
#pragma once

#include <string>

namespace test {

inline std::string reportOf(const std::string& text) {
  std::string report;
  bool atBeginning = true;
  for (const char character : text) {
    const bool isHead = atBeginning && (character == '@' || character == '<' || character == '~');
    if (isHead) {
      report += character == '<' ? "15-11-2026 05:03:10" : "15-11-2026 05:03:11";
      report += character == '~' ? "\t(1234:9)\t" : "\t(1234:5678)\t";
    } else {
      report += character;
    }
    atBeginning = character == '\n' || (atBeginning && character == '\0');
  }
  return report;
}

}  // namespace test
