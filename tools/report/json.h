// A report for machines. report.schema.json tells the form.
#pragma once

#include <ostream>
#include <string>

#include "report/report.h"
#include "report/verdict.h"

namespace reader {

/// Writes the report and its findings as one line of JSON. What it holds goes out as it is read, so
/// that the memory it takes does not grow with the report.
/// `file` is what tells this report from others, as UTF-8; empty if nothing has to.
void writeJson(const Report& report, std::ostream& out, Origin origin = Origin::server,
               const std::string& file = {});

}  // namespace reader
