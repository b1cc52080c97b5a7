// A report for machines. report.schema.json tells the form.
#pragma once

#include <ostream>

#include "report/report.h"
#include "report/verdict.h"

namespace reader {

/// Writes the report and its findings as one line of JSON. What it holds goes out as it is read, so
/// that the memory it takes does not grow with the report.
void writeJson(const Report& report, std::ostream& out, Origin origin = Origin::server);

}  // namespace reader
