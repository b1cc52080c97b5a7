// What the commands do. Each writes to `out`, gives the exit status, and raises Failure.
#pragma once

#include <optional>
#include <ostream>
#include <string>

#include "report/report_files.h"
#include "report/verdict.h"

namespace reader {

inline constexpr int succeeded = 0;
inline constexpr int found = 1;
inline constexpr int failed = 2;

struct CheckOptions {
  Origin origin = Origin::server;
  bool isForPeople = false;  ///< Text in place of columns, where the terminal is the output.
  Severity failOn = Severity::note;
};

int check(const ReportFiles& files, const CheckOptions& options, std::ostream& out);

int json(const ReportFiles& files, Origin origin, std::ostream& out);

/// One page of all reports. It writes nothing if none can be read.
int html(const ReportFiles& files, const std::string& title, Origin origin, std::ostream& out);

/// All codes where `code` is empty.
int explain(const std::string& code, std::ostream& out);

int diff(const std::string& nameBefore, const std::string& nameAfter, std::ostream& out);

int mask(const std::string& name, const std::optional<std::string>& mapName, std::ostream& out);

int unmask(const std::string& name, const std::string& mapName, std::ostream& out);

}  // namespace reader
