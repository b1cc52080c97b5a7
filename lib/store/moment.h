// Points in time, to a hundredth of a second in GMT. The years 1 to 9999 exist.
#pragma once

#include <chrono>
#include <cstdint>
#include <ratio>
#include <string>
#include <string_view>

namespace store {

using Moment = std::chrono::sys_time<std::chrono::duration<std::int64_t, std::centi>>;

/// The day of a moment. Throws impossibleTime for one in another year.
std::chrono::sys_days dayOf(Moment moment);

/// The moment of a date and a time of day. Throws impossibleTime where one of them does not exist.
Moment momentOf(std::chrono::year_month_day date, std::chrono::hours hour,
                std::chrono::minutes minute, std::chrono::seconds second);

/// Reads a moment such as 2012-05-30T14:07:00.25Z, where the fraction and its point may be left
/// out. Throws notATime and impossibleTime.
Moment momentFromIso(std::string_view text);

/// The same form, without a fraction of zeros.
std::string isoText(Moment moment);

/// The date and the time of day, as "2012-05-30 14:07:00" if `between` is a blank.
std::string dateAndTime(Moment moment, char between);

}  // namespace store
