#include "time_text.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <iterator>

#include "status.h"
#include "text.h"
#include "time_date.h"

namespace standin {
namespace {

using namespace std::chrono;

// The one text form: four-digit year, month, day; hours, minutes, seconds; no zone; date and time.
bool isDateAndTime(const TFMT& format) {
  return format.Date == 4 && format.Time == 0 && format.Zone == 0 && format.Structure == 2;
}

// A separator that fills its field has no closing zero.
template <std::size_t Size>
std::string_view fieldText(const char (&field)[Size]) {
  return {field, static_cast<std::size_t>(std::find(field, field + Size, '\0') - field)};
}

// Takes a text apart from its front.
class Reader {
 public:
  explicit Reader(std::string_view text) : rest_(text) {}

  std::string_view rest() const { return rest_; }

  int number(std::size_t fewestDigits, std::size_t mostDigits) {
    const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
    int value = 0;
    std::size_t count = 0;
    for (; count < std::min(mostDigits, rest_.size()) && isDigit(rest_[count]); ++count)
      value = value * 10 + (rest_[count] - '0');
    if (count < fewestDigits) throw Failure(Status::notATime);
    rest_.remove_prefix(count);
    return value;
  }

  void mark(std::string_view expected) {
    if (!rest_.starts_with(expected)) throw Failure(Status::notATime);
    rest_.remove_prefix(expected.size());
  }

  void blanks() { rest_.remove_prefix(std::min(rest_.find_first_not_of(" \t"), rest_.size())); }

 private:
  std::string_view rest_;
};

sys_days dayOf(year_month_day date) {
  if (!date.ok()) throw Failure(Status::impossibleTime);
  return date;
}

seconds clockOf(hours hour, minutes minute, seconds second) {
  if (hour >= days(1) || minute >= hours(1) || second >= minutes(1))
    throw Failure(Status::impossibleTime);
  return hour + minute + second;
}

sys_days readDate(Reader& reader, const INTLFORMAT& settings) {
  const std::string_view mark = fieldText(settings.DateString);
  const bool yearFirst = (settings.Flags & DATE_YMD) != 0;
  const int first = yearFirst ? reader.number(4, 4) : reader.number(1, 2);
  reader.mark(mark);
  const int middle = reader.number(1, 2);
  reader.mark(mark);
  const int last = yearFirst ? reader.number(1, 2) : reader.number(4, 4);
  return dayOf(year(yearFirst ? first : last) / middle / (yearFirst ? last : first));
}

seconds readClock(Reader& reader, const INTLFORMAT& settings) {
  const std::string_view mark = fieldText(settings.TimeString);
  const hours hour(reader.number(1, 2));
  reader.mark(mark);
  const minutes minute(reader.number(1, 2));
  reader.mark(mark);
  return clockOf(hour, minute, seconds(reader.number(1, 2)));
}

}  // namespace

INTLFORMAT ownSettings(hours zone) {
  INTLFORMAT settings{};
  settings.Flags = NUMBER_LEADING_ZERO | CLOCK_24_HOUR;
  settings.CurrencyDigits = 2;
  settings.Length = sizeof settings;
  settings.TimeZone = static_cast<int16_t>(zone.count());
  const auto fill = [](auto& field, std::string_view text) {
    copyText(text, field, std::size(field));
  };
  fill(settings.AMString, "AM");
  fill(settings.PMString, "PM");
  fill(settings.CurrencyString, "EUR");
  fill(settings.ThousandString, ",");
  fill(settings.DecimalString, ".");
  fill(settings.DateString, ".");
  fill(settings.TimeString, ":");
  fill(settings.YesterdayString, "Yesterday");
  fill(settings.TodayString, "Today");
  fill(settings.TomorrowString, "Tomorrow");
  return settings;
}

TIMEDATE readTime(const INTLFORMAT& settings, const TFMT& format, std::string_view text,
                  hours zone) {
  if (!isDateAndTime(format)) throw Failure(Status::unknownTimeFormat);
  Reader reader(text);
  reader.blanks();
  const sys_days date = readDate(reader, settings);
  reader.mark(" ");
  reader.blanks();
  const seconds clock = readClock(reader, settings);
  reader.blanks();
  if (!reader.rest().empty()) throw Failure(Status::notATime);
  return timeDateOf(Moment(date) + clock + zone);
}

Moment momentFromIso(std::string_view text) {
  Reader reader(text);
  const std::array separators{"-", "-", "T", ":", ":"};
  std::array<int, 6> parts{reader.number(4, 4)};
  for (std::size_t i = 0; i < separators.size(); ++i) {
    reader.mark(separators[i]);
    parts[i + 1] = reader.number(2, 2);
  }
  int hundredths = 0;
  if (reader.rest().starts_with('.')) {
    reader.mark(".");
    hundredths = reader.number(2, 2);
  }
  reader.mark("Z");
  if (!reader.rest().empty()) throw Failure(Status::notATime);
  const auto [y, m, d, hour, minute, second] = parts;
  const seconds clock = clockOf(hours(hour), minutes(minute), seconds(second));
  return momentOf(
      timeDateOf(Moment(dayOf(year(y) / m / d)) + clock + Moment::duration(hundredths)));
}

std::string isoText(Moment moment) {
  TIME time{};
  time.GM = timeDateOf(moment);
  fillLocalParts(time, hours(0));
  std::array<char, NOTES_TIME_TEXT_SIZE> text{};
  const int length =
      std::snprintf(text.data(), text.size(), "%04d-%02d-%02dT%02d:%02d:%02d.%02dZ", time.year,
                    time.month, time.day, time.hour, time.minute, time.second, time.hundredth);
  return {text.data(), static_cast<std::size_t>(length)};
}

}  // namespace standin
