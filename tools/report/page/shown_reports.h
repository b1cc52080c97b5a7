// The reports of a page, and what it tells of each at first sight.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "report/report.h"
#include "report/verdict.h"

namespace reader {

/// The same words about several findings of one severity.
struct Group {
  Verdict verdict;
  std::vector<Finding> findings;  ///< The first of them.
  std::size_t count = 0;
};

struct FoundCode {
  Code code;
  std::size_t count;
};

/// The findings of a report, as a page shows them.
struct Findings {
  std::vector<Group> groups;                ///< The worst first.
  std::vector<FoundCode> codes;             ///< Those of the worst findings first.
  std::vector<std::uint32_t> wrongLines;    ///< Of errors and warnings, in their order.
  std::array<std::size_t, 3> severities{};  ///< How many of each.

  std::size_t count(Severity severity) const {
    return severities.at(static_cast<std::size_t>(severity));
  }
};

Findings findingsOf(const Report& report, Origin origin);

/// What the run tells that began last. UTF-8.
struct Summary {
  std::string server;      ///< Empty if the report does not tell.
  std::uint64_t time = 0;  ///< Of its first entry, as the digits of Entry.
  std::string started;     ///< As yyyy-mm-dd hh:mm:ss; empty if its beginning is lost.
  bool isComplete = false;
  std::array<std::string, 3> versions{};  ///< Of Domino, core and VRX.
  std::string configuration;
};

Summary summaryOf(const Report& report);

struct ShownReport {
  std::size_t number;     ///< From 1, in the order in which the reports are given.
  std::string name;       ///< The last part of its file's name.
  std::string failure{};  ///< Why it could not be read.
  std::unique_ptr<Report> report{};
  Findings findings{};
  Summary summary{};
  std::vector<bool> lines{};  ///< By their numbers: whether the page shows them.

  std::string_view title() const {
    return summary.server.empty() ? std::string_view(name) : summary.server;
  }
};

}  // namespace reader
