// Times as texts: the settings that say how a person writes them, and the reader.
//
// The library's own settings put the day first. A caller who wants another order or other
// separators overrides them in its copy and passes that. The clock is always the one of 24 hours.
#pragma once

#include <chrono>
#include <string_view>

#include "notes/abi.h"
#include "standin/time_date.h"

namespace standin {

INTLFORMAT ownSettings(std::chrono::hours zone);

/// Reads `text`, a local date and time of day such as 30.05.2012 14:07:00, or 2012-05-30 14:07:00
/// with DATE_YMD and "-"; blanks may stand around it. The year has four digits, the other parts
/// have one or two. Throws unknownTimeFormat where `format` is any other than full date and time,
/// notATime, also where the text goes on behind the time, and impossibleTime.
TIMEDATE readTime(const INTLFORMAT& settings, const TFMT& format, std::string_view text,
                  std::chrono::hours zone);

}  // namespace standin
