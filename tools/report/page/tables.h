// Lists of a report as tables.
#pragma once

#include "report/page/html.h"
#include "report/section_content.h"

namespace reader {

/// A list or a table of a page is no longer.
inline constexpr std::size_t mostRows = 1000;

/// Writes the objects of a target, which is one of those with a table, and their number.
void writeTable(Html& html, const SectionContent& content, Target target);

/// Writes a sign and a word for what is well or is not.
void writeMark(Html& html, bool isWell, Markup well, Markup ill);

/// Writes how many of `count` things a list of the page leaves out, if there are such.
void writeRest(Html& html, std::size_t count);

}  // namespace reader
