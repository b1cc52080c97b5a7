#include "store/moment.h"

#include <array>
#include <cstdio>

#include "store/status.h"
#include "store/text_front.h"

namespace store {

using namespace std::chrono;

sys_days dayOf(Moment moment) {
  constexpr sys_days first = year{1} / January / 1;
  constexpr sys_days last = year{9999} / December / 31;
  const sys_days day = floor<days>(moment);
  if (day < first || day > last) throw Failure(Status::impossibleTime);
  return day;
}

Moment momentOf(year_month_day date, hours hour, minutes minute, seconds second) {
  if (!date.ok() || hour >= days(1) || minute >= hours(1) || second >= minutes(1))
    throw Failure(Status::impossibleTime);
  return Moment(sys_days(date)) + hour + minute + second;
}

Moment momentFromIso(std::string_view text) {
  TextFront front(text);
  const year y(front.number(4, 4));
  front.expect("-");
  const month m(static_cast<unsigned>(front.number(2, 2)));
  front.expect("-");
  const day d(static_cast<unsigned>(front.number(2, 2)));
  front.expect("T");
  const hours hour(front.number(2, 2));
  front.expect(":");
  const minutes minute(front.number(2, 2));
  front.expect(":");
  const seconds second(front.number(2, 2));
  const Moment::duration hundredths(front.take('.') ? front.number(2, 2) : 0);
  front.expect("Z");
  front.expectEnd();
  const Moment moment = momentOf(y / m / d, hour, minute, second) + hundredths;
  dayOf(moment);
  return moment;
}

std::string isoText(Moment moment) {
  std::string text = dateAndTime(moment, 'T');
  const auto hundredths = static_cast<int>((moment - floor<seconds>(moment)).count());
  const auto digit = [](int number) { return static_cast<char>('0' + number); };
  if (hundredths != 0) text += {'.', digit(hundredths / 10), digit(hundredths % 10)};
  return text += 'Z';
}

std::string dateAndTime(Moment moment, char between) {
  const sys_days day = dayOf(moment);
  const year_month_day date = day;
  const hh_mm_ss clock(floor<seconds>(moment - day));
  std::array<char, 32> text{};
  const int length = std::snprintf(text.data(), text.size(), "%04d-%02u-%02u%c%02d:%02d:%02d",
                                   int{date.year()}, unsigned{date.month()}, unsigned{date.day()},
                                   between, static_cast<int>(clock.hours().count()),
                                   static_cast<int>(clock.minutes().count()),
                                   static_cast<int>(clock.seconds().count()));
  return {text.data(), static_cast<std::size_t>(length)};
}

}  // namespace store
