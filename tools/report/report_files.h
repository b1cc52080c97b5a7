// The reports that the words of a command stand for.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "report/report.h"

namespace reader {

/// The report in a file, or on standard input if its name is "-". Raises Failure.
std::unique_ptr<Report> readReport(const std::string& name);

/// The last part of a file's name.
std::string lastPartOf(const std::string& name);

class ReportFiles {
 public:
  /// A folder stands for the reports in it, in the order of the bytes of their names.
  explicit ReportFiles(const std::vector<std::string>& names);

  /// Whether there is more than one, or a folder, so that output has to tell them apart.
  bool areNamed() const { return areNamed_; }

  using Take = std::function<void(const std::string& name, std::unique_ptr<Report> report)>;
  using Miss = std::function<void(const std::string& name, const std::string& reason)>;

  /// Hands out one report after the other, and those that cannot be read to `miss`, which it tells
  /// of as well. False if there are such, but raises Failure if all are.
  bool forEach(const Take& take, const Miss& miss = {}) const;

  /// Of all the files that are read.
  std::vector<std::string> names() const;

 private:
  struct File {
    std::string name;
    std::string failure;  // why it is none
  };

  void addFolder(const std::string& name);

  std::vector<File> files_;
  bool areNamed_;
};

}  // namespace reader
