// The clock of the system. It goes on behind the year 2038 in programs of 32 bits too, where the
// language's own ends.
#pragma once

#include <cstdint>
#include <ctime>

namespace platform {

/// The present moment, in seconds and in hundredths of them since 1970.
std::int64_t currentTime();
std::int64_t currentHundredths();

/// A moment, in seconds since 1970, in the zone of the process.
std::tm localTime(std::int64_t moment);

}  // namespace platform
