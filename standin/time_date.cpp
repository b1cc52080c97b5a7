#include "standin/time_date.h"

#include "platform/clock.h"
#include "standin/status.h"

namespace standin {
namespace {

using namespace std::chrono;

constexpr std::int64_t julianDayOfEpoch = 2440588;  // of 1970-01-01
constexpr DWORD dayMask = 0xFFFFFF;
constexpr DWORD hundredthsOfDay = 24 * 60 * 60 * 100;

}  // namespace

store::Moment momentOf(const TIMEDATE& time) {
  const DWORD hundredths = time.Innards[0];
  if (hundredths >= hundredthsOfDay) throw Failure(Status::impossibleTime);
  const std::int64_t day = std::int64_t{time.Innards[1] & dayMask} - julianDayOfEpoch;
  const store::Moment moment = store::Moment(days(day)) + store::Moment::duration(hundredths);
  store::dayOf(moment);
  return moment;
}

TIMEDATE timeDateOf(store::Moment moment) {
  const sys_days day = store::dayOf(moment);
  return {{static_cast<DWORD>((moment - day).count()),
           static_cast<DWORD>(day.time_since_epoch().count() + julianDayOfEpoch)}};
}

TIMEDATE currentTime() {
  return timeDateOf(store::Moment(store::Moment::duration(platform::currentHundredths())));
}

void fillLocalParts(TIME& time, hours zone) {
  const store::Moment local = momentOf(time.GM) - zone;
  const sys_days day = store::dayOf(local);
  const year_month_day date = day;
  const hh_mm_ss clock(local - day);
  time.year = int{date.year()};
  time.month = static_cast<int32_t>(unsigned{date.month()});
  time.day = static_cast<int32_t>(unsigned{date.day()});
  time.weekday = static_cast<int32_t>(weekday(day).c_encoding()) + 1;  // 1 is Sunday
  time.hour = static_cast<int32_t>(clock.hours().count());
  time.minute = static_cast<int32_t>(clock.minutes().count());
  time.second = static_cast<int32_t>(clock.seconds().count());
  time.hundredth = static_cast<int32_t>(clock.subseconds().count());
  time.dst = 0;
  time.zone = static_cast<int32_t>(zone.count());
}

}  // namespace standin
