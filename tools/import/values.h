// The values of an export that are texts by a rule: numbers, times, hexadecimal numbers.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "store/moment.h"

namespace dxl {

/// A note id: hexadecimal digits of a number from 1 to FFFFFFFF; 0 for all else.
std::uint32_t noteIdFrom(std::string_view digits);

/// An optional sign, digits with at most one point, an optional exponent; nothing for all else, and
/// for what a double cannot hold.
std::optional<double> numberFrom(std::string_view text);

/// A date and time, yyyymmddThhmmss,hh with an offset from GMT, +hh or +hhmm; hundredths and offset
/// may be left out, and so may either half. Without an offset it is local time of `zone`, hours
/// west of GMT. A date alone is its midnight, a time alone is on 2000-01-01.
std::optional<store::Moment> momentFrom(std::string_view text, std::chrono::hours zone);

/// The UTF-8 of a character that XML cannot hold, by its hexadecimal number, 0x before it or not.
/// Nothing if it is no such number, empty if there is no character of that number or it is 0.
std::optional<std::string> characterFrom(std::string_view digits);

}  // namespace dxl
