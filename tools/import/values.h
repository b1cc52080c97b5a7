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

/// The capital form of a replica id, sixteen hexadecimal digits; empty for all else.
std::string replicaIdFrom(std::string_view digits);

/// An optional sign, digits with at most one point, an optional exponent; nothing for all else, and
/// for what a double cannot hold.
std::optional<double> numberFrom(const std::string& text);

/// A date and time, yyyymmddThhmmss,hh with an offset from GMT, +hh or +hhmm; hundredths and offset
/// may be left out, and so may either half. Without an offset it is local time of `zone`, hours
/// west of GMT. A date alone is its midnight, a time alone is on 2000-01-01.
std::optional<store::Moment> momentFrom(std::string_view text, std::chrono::hours zone);

/// The number of a character that XML cannot hold, hexadecimal, 0x before it or not; nothing if it
/// is no such number, FFFFFFFF if it is too large.
std::optional<std::uint32_t> characterNumberFrom(std::string_view digits);

/// Appends the UTF-8 of a character; false if there is none of that number, or it is 0.
bool appendCharacter(std::string& text, std::uint32_t number);

}  // namespace dxl
