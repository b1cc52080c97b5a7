// Times as texts: the settings that say how a person writes them, and the reader.
//
// The library's own settings put the day first. A caller who wants another order or other
// separators overrides them in its copy and passes that. The clock is always the one of 24 hours.
// A store has a form of its own, in which times are in GMT and exact.
#pragma once

#include <chrono>
#include <string>
#include <string_view>

#include "notes/abi.h"
#include "time_date.h"

namespace standin {

INTLFORMAT ownSettings(std::chrono::hours zone);

/// Reads `text`, a local date and time of day such as 30.05.2012 14:07:00, or 2012-05-30 14:07:00
/// with DATE_YMD and "-"; blanks may stand around it. The year has four digits, the other parts
/// have one or two. Throws unknownTimeFormat where `format` is any other than full date and time,
/// notATime, also where the text goes on behind the time, and impossibleTime.
TIMEDATE readTime(const INTLFORMAT& settings, const TFMT& format, std::string_view text,
                  std::chrono::hours zone);

/// Reads a moment in GMT such as 2012-05-30T14:07:00.25Z, where the fraction and its point may be
/// left out. Throws notATime and impossibleTime.
Moment momentFromIso(std::string_view text);

/// The same form with a fraction of two digits.
std::string isoText(Moment moment);

}  // namespace standin
