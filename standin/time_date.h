// Points in time.
//
// A TIMEDATE is hundredths of a second since midnight GMT and, in the low 24 bits of its second
// word, the Julian day number; inside the library it is a Moment. The years 1 to 9999 exist, so a
// TIMEDATE of zeros is no time. Local time is GMT less the hours of the zone, which counts
// westward; there is no daylight saving.
#pragma once

#include <chrono>
#include <cstdint>
#include <ratio>

#include "notes/abi.h"

namespace standin {

using Moment = std::chrono::sys_time<std::chrono::duration<std::int64_t, std::centi>>;

/// Both throw impossibleTime.
Moment momentOf(const TIMEDATE& time);
TIMEDATE timeDateOf(Moment moment);

TIMEDATE currentTime();

/// Fills the ten parts of `time` with the local time of its GM. Throws impossibleTime.
void fillLocalParts(TIME& time, std::chrono::hours zone);

}  // namespace standin
