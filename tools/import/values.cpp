#include "import/values.h"

#include <charconv>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <utility>

#include "platform/code_pages.h"
#include "store/status.h"
#include "store/text_front.h"

namespace dxl {
namespace {

using namespace std::chrono;

// Nothing for what is no hexadecimal number; one that is too large is larger than any id and any
// character.
std::optional<std::uint64_t> hexadecimalFrom(std::string_view digits) {
  std::uint64_t number = 0;
  const char* const end = digits.data() + digits.size();
  const auto [stop, error] = std::from_chars(digits.data(), end, number, 16);
  if (error == std::errc::invalid_argument || stop != end) return std::nullopt;
  return error == std::errc() ? number : std::numeric_limits<std::uint64_t>::max();
}

year_month_day readDate(store::TextFront& front) {
  const year y(front.number(4, 4));
  const month m(static_cast<unsigned>(front.number(2, 2)));
  const day d(static_cast<unsigned>(front.number(2, 2)));
  return y / m / d;
}

store::Moment::duration timeOfDay(int hour, int minute, int second) {
  constexpr year_month_day anyDay = 1970y / January / 1;
  return store::momentOf(anyDay, hours(hour), minutes(minute), seconds(second)).time_since_epoch();
}

store::Moment::duration readTimeOfDay(store::TextFront& front) {
  const int hour = front.number(2, 2);
  const int minute = front.number(2, 2);
  const int second = front.number(2, 2);
  const store::Moment::duration hundredths(front.take(',') ? front.number(2, 2) : 0);
  return timeOfDay(hour, minute, second) + hundredths;
}

// How far the time is behind GMT.
store::Moment::duration readOffset(store::TextFront& front) {
  const bool isWest = front.take('-');
  if (!isWest) front.expect("+");
  const int hour = front.number(2, 2);
  const int minute = front.isAtEnd() ? 0 : front.number(2, 2);
  return isWest ? timeOfDay(hour, minute, 0) : -timeOfDay(hour, minute, 0);
}

store::Moment readMoment(store::TextFront& front, hours zone) {
  const year_month_day date = front.isAt('T') ? 2000y / January / 1 : readDate(front);
  store::Moment moment = store::momentOf(date, 0h, 0min, 0s);
  store::dayOf(moment);  // year 0 does not exist in any zone
  store::Moment::duration behind = zone;
  if (front.take('T')) {
    moment += readTimeOfDay(front);
    if (!front.isAtEnd()) behind = readOffset(front);
  }
  front.expectEnd();
  moment += behind;
  store::dayOf(moment);
  return moment;
}

}  // namespace

std::uint32_t noteIdFrom(std::string_view digits) {
  const std::uint64_t id = hexadecimalFrom(digits).value_or(0);
  return std::in_range<std::uint32_t>(id) ? static_cast<std::uint32_t>(id) : 0;
}

std::optional<double> numberFrom(std::string_view text) {
  if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
  double number = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  if (error == std::errc::invalid_argument || stop != end) return std::nullopt;
  // Only this tells what is too small, and thereby 0, from what is too large.
  if (error == std::errc::result_out_of_range)
    number = std::strtod(std::string(text).c_str(), nullptr);
  if (!std::isfinite(number)) return std::nullopt;
  return number;
}

std::optional<store::Moment> momentFrom(std::string_view text, hours zone) {
  store::TextFront front(text);
  try {
    return readMoment(front, zone);
  } catch (const store::Failure&) {
    return std::nullopt;
  }
}

std::optional<std::string> characterFrom(std::string_view digits) {
  if (digits.starts_with("0x") || digits.starts_with("0X")) digits.remove_prefix(2);
  const std::optional<std::uint64_t> number = hexadecimalFrom(digits);
  if (!number.has_value()) return std::nullopt;
  if (*number == 0 || *number > 0x10FFFF || (*number >= 0xD800 && *number < 0xE000)) return "";
  if (*number < 0x10000)
    return platform::wideToUtf8(std::u16string{static_cast<char16_t>(*number)});
  return platform::wideToUtf8(std::u16string{static_cast<char16_t>(0xD7C0 + (*number >> 10U)),
                                             static_cast<char16_t>(0xDC00 | (*number & 0x3FFU))});
}

}  // namespace dxl
