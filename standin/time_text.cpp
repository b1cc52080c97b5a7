#include "standin/time_text.h"

#include <algorithm>
#include <iterator>

#include "standin/caller_text.h"
#include "standin/status.h"
#include "standin/time_date.h"
#include "store/text_front.h"

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

year_month_day readDate(store::TextFront& front, const INTLFORMAT& settings) {
  const std::string_view mark = fieldText(settings.DateString);
  const bool yearFirst = (settings.Flags & DATE_YMD) != 0;
  const int first = yearFirst ? front.number(4, 4) : front.number(1, 2);
  front.expect(mark);
  const int middle = front.number(1, 2);
  front.expect(mark);
  const int last = yearFirst ? front.number(1, 2) : front.number(4, 4);
  return year(yearFirst ? first : last) / middle / (yearFirst ? last : first);
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
  const std::string_view mark = fieldText(settings.TimeString);
  store::TextFront front(text);
  front.skipBlanks();
  const year_month_day date = readDate(front, settings);
  front.expect(" ");
  front.skipBlanks();
  const hours hour(front.number(1, 2));
  front.expect(mark);
  const minutes minute(front.number(1, 2));
  front.expect(mark);
  const seconds second(front.number(1, 2));
  front.skipBlanks();
  front.expectEnd();
  return timeDateOf(store::momentOf(date, hour, minute, second) + zone);
}

}  // namespace standin
