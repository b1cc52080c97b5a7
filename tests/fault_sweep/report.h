// A report as lines that compare from run to run.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace test {

/// The lines of a report. The first of each entry begins with "* " in place of its time, process
/// and thread number, without the line feeds with which the text may begin; what else differs from
/// run to run, and the number of entries that an import step took up, are masked.
std::vector<std::string> reportLines(const std::string& report);

struct Change {
  std::size_t
      at;  ///< The number of the earlier line that is gone, or in front of which this is new.
  std::string line;
};

struct Difference {
  std::vector<Change> lost;
  std::vector<Change> gained;
};

/// The fewest changes that make the one of the other.
Difference difference(const std::vector<std::string>& before,
                      const std::vector<std::string>& after);

}  // namespace test
