#include "import/values.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <limits>

#include "store/letters.h"

namespace dxl {
namespace {

using namespace std::chrono;

bool isDigit(char c) { return c >= '0' && c <= '9'; }

bool isHexadecimal(std::string_view text) {
  return !text.empty() &&
         text.find_first_not_of("0123456789abcdefABCDEF") == std::string_view::npos;
}

// Takes a text apart from its front; what it asks for and does not get makes it fail.
class Front {
 public:
  explicit Front(std::string_view text) : rest_(text) {}

  bool isValid() const { return isValid_; }
  bool isAtEnd() const { return rest_.empty(); }
  bool isAt(char mark) const { return rest_.starts_with(mark); }
  std::size_t size() const { return rest_.size(); }

  bool take(char mark) {
    if (!isAt(mark)) return false;
    rest_.remove_prefix(1);
    return true;
  }

  // A number of exactly so many digits, from `least` to `most`.
  int number(std::size_t digits, int least, int most) {
    int value = 0;
    for (std::size_t i = 0; i < digits && isValid_; ++i) {
      isValid_ = i < rest_.size() && isDigit(rest_[i]);
      if (isValid_) value = value * 10 + (rest_[i] - '0');
    }
    isValid_ = isValid_ && value >= least && value <= most;
    if (isValid_) rest_.remove_prefix(digits);
    return value;
  }

  std::size_t skipDigits() {
    const auto* const end = std::find_if_not(rest_.begin(), rest_.end(), isDigit);
    const auto count = static_cast<std::size_t>(end - rest_.begin());
    rest_.remove_prefix(count);
    return count;
  }

 private:
  std::string_view rest_;
  bool isValid_ = true;
};

bool isNumber(std::string_view text) {
  Front front(text);
  const auto skipSign = [&front] { return front.take('+') || front.take('-'); };
  skipSign();
  std::size_t digits = front.skipDigits();
  if (front.take('.')) digits += front.skipDigits();
  if (digits == 0) return false;
  if (front.take('e') || front.take('E')) {
    skipSign();
    if (front.skipDigits() == 0) return false;
  }
  return front.isAtEnd();
}

std::optional<sys_days> readDate(Front& front) {
  const int y = front.number(4, 1, 9999);
  const int m = front.number(2, 1, 12);
  const int d = front.number(2, 1, 31);
  const year_month_day date{year(y), month(static_cast<unsigned>(m)),
                            day(static_cast<unsigned>(d))};
  if (!front.isValid() || !date.ok()) return std::nullopt;
  return date;
}

store::Moment::duration readTimeOfDay(Front& front) {
  const hours h(front.number(2, 0, 23));
  const minutes m(front.number(2, 0, 59));
  const seconds s(front.number(2, 0, 59));
  const store::Moment::duration hundredths(front.take(',') ? front.number(2, 0, 99) : 0);
  return h + m + s + hundredths;
}

// How far the time is ahead of GMT.
minutes readOffset(Front& front) {
  const bool isWest = front.take('-');
  if (!isWest) front.take('+');
  const hours h(front.number(2, 0, 23));
  const minutes m(front.isAtEnd() ? 0 : front.number(2, 0, 59));
  return isWest ? -(h + m) : h + m;
}

}  // namespace

std::uint32_t noteIdFrom(std::string_view digits) {
  std::uint32_t id = 0;
  if (!isHexadecimal(digits)) return 0;
  const auto [stop, error] = std::from_chars(digits.data(), digits.data() + digits.size(), id, 16);
  return error == std::errc() ? id : 0;
}

std::string replicaIdFrom(std::string_view digits) {
  return digits.size() == 16 && isHexadecimal(digits)
             ? store::folded(digits, store::LetterCase::upper)
             : std::string();
}

std::optional<double> numberFrom(const std::string& text) {
  if (!isNumber(text)) return std::nullopt;
  const double number = std::strtod(text.c_str(), nullptr);
  if (!std::isfinite(number)) return std::nullopt;
  return number;
}

std::optional<store::Moment> momentFrom(std::string_view text, hours zone) {
  Front front(text);
  if (front.isAtEnd()) return std::nullopt;
  std::optional<sys_days> day = sys_days(2000y / January / 1);
  if (!front.isAt('T')) day = readDate(front);
  if (!day.has_value()) return std::nullopt;
  store::Moment moment = *day + zone;
  if (front.take('T')) {
    moment += readTimeOfDay(front);
    if (front.isAt('+') || front.isAt('-')) moment -= zone + readOffset(front);
  }
  constexpr store::Moment first = sys_days(year(1) / January / 1);
  constexpr store::Moment end = sys_days(year(10000) / January / 1);
  if (!front.isValid() || !front.isAtEnd() || moment < first || moment >= end) return std::nullopt;
  return moment;
}

std::optional<std::uint32_t> characterNumberFrom(std::string_view digits) {
  if (digits.starts_with("0x") || digits.starts_with("0X")) digits.remove_prefix(2);
  if (!isHexadecimal(digits)) return std::nullopt;
  std::uint32_t number = 0;
  const auto [stop, error] =
      std::from_chars(digits.data(), digits.data() + digits.size(), number, 16);
  return error == std::errc() ? number : std::numeric_limits<std::uint32_t>::max();
}

bool appendCharacter(std::string& text, std::uint32_t number) {
  if (number == 0 || number > 0x10FFFF || (number >= 0xD800 && number < 0xE000)) return false;
  const auto tail = [number](unsigned shift) {
    return static_cast<char>(0x80U | (number >> shift & 0x3FU));
  };
  if (number < 0x80) {
    text += static_cast<char>(number);
  } else if (number < 0x800) {
    text += {static_cast<char>(0xC0U | number >> 6U), tail(0)};
  } else if (number < 0x10000) {
    text += {static_cast<char>(0xE0U | number >> 12U), tail(6), tail(0)};
  } else {
    text += {static_cast<char>(0xF0U | number >> 18U), tail(12), tail(6), tail(0)};
  }
  return true;
}

}  // namespace dxl
