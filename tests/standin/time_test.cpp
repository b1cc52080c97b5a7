#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstring>

#include "server.h"

namespace standin_tests {
namespace {

INTLFORMAT ownSettings() {
  INTLFORMAT settings{};
  library().OSGetIntlSettings(&settings, sizeof settings);
  return settings;
}

INTLFORMAT yearFirst() {
  INTLFORMAT settings = ownSettings();
  settings.Flags |= DATE_YMD;
  settings.DateString[0] = '-';
  return settings;
}

// "<local time> of <day>:<hundredths>", or "refused"; checks what the call did to its outputs.
std::string local(TIMEDATE gm) {
  TIME t{};
  t.GM = gm;
  if (library().TimeGMToLocal(&t) != 0) return t.year == 0 ? "refused" : "refused, but written";
  std::array<char, 160> text{};
  EXPECT_GT(std::snprintf(text.data(), text.size(),
                          "%04d-%02d-%02d %02d:%02d:%02d.%02d weekday %d zone %d dst %d of %u:%u",
                          t.year, t.month, t.day, t.hour, t.minute, t.second, t.hundredth,
                          t.weekday, t.zone, t.dst, gm.Innards[1], gm.Innards[0]),
            0);
  return text.data();
}

std::string read(std::string text, const INTLFORMAT& settings, WORD maximum = 80,
                 const TFMT& format = {4, 0, 0, 2}) {
  TIMEDATE time{{7, 7}};
  char* rest = text.data();
  if (library().ConvertTextToTIMEDATE(&settings, &format, &rest, maximum, &time) != 0)
    return rest == text.data() && time.Innards[1] == 7 ? "refused" : "refused, but written";
  EXPECT_EQ(rest, text.data() + std::min<std::size_t>(maximum, text.size()));
  return local(time);
}

TEST(Time, TextGoesToGmtAndBack) {
  const struct {
    std::string zone, text, result;
  } rows[] = {
      {"", "1970-01-01 00:00:00", ".00 weekday 5 zone 0 dst 0 of 2440588:0"},
      {"0", "2012-05-30 14:07:00", ".00 weekday 4 zone 0 dst 0 of 2456078:5082000"},
      {"5", "2012-02-29 23:30:00", ".00 weekday 4 zone 5 dst 0 of 2455988:1620000"},
      {"-2", "2012-01-01 00:30:00", ".00 weekday 1 zone -2 dst 0 of 2455927:8100000"},
      {" -1 ", "2000-02-29 01:00:00", ".00 weekday 3 zone -1 dst 0 of 2451604:0"},
      {"0", "1900-02-28 23:59:59", ".00 weekday 4 zone 0 dst 0 of 2415079:8639900"},
      {"0", "0001-01-01 00:00:00", ".00 weekday 2 zone 0 dst 0 of 1721426:0"},
      {"0", "9999-12-31 23:59:59", ".00 weekday 6 zone 0 dst 0 of 5373484:8639900"},
  };
  for (const auto& row : rows) {
    const RunningServer server("Timezone=" + row.zone + "\n");
    EXPECT_EQ(read(row.text, yearFirst()), row.text + row.result);
  }
}

TEST(Time, WrongTextsAreRefused) {
  const RunningServer server("Timezone=-1\n");
  for (const char* text : {"2012-02-30 00:00:00",
                           "2011-02-29 00:00:00",
                           "1900-02-29 00:00:00",
                           "2012-13-01 00:00:00",
                           "2012-00-01 00:00:00",
                           "2012-01-00 00:00:00",
                           "2012-01-01 24:00:00",
                           "2012-01-01 23:60:00",
                           "2012-01-01 23:59:60",
                           "0000-01-01 00:00:00",
                           "0001-01-01 00:59:59",
                           "12-05-30 14:07:00",
                           "2012-05-30",
                           "2012-05-30 14:07",
                           "2012/05/30 14:07:00",
                           "2012-05-30 14:07:00x",
                           "2012-05-3014:07:00",
                           "2012-05-30 14:07:000",
                           "30-05-2012 14:07:00",
                           "",
                           "  "})
    EXPECT_EQ(read(text, yearFirst()), "refused") << text;
  EXPECT_EQ(read("2012-05-30 14:07:00", yearFirst(), 80, {0, 0, 0, 0}), "refused");
}

TEST(Time, SettingsDecideOrderSeparatorsAndLength) {
  const RunningServer server("Timezone=3\n");
  const std::string expected = read("2012-01-02 03:04:05", yearFirst());
  INTLFORMAT settings = ownSettings();
  EXPECT_EQ(settings.TimeZone, 3);
  EXPECT_EQ(read("02.01.2012 03:04:05", settings), expected);
  EXPECT_EQ(read(" 2.1.2012  3:4:5 ", settings), expected);
  EXPECT_EQ(read("2012-01-02 03:04:05", settings), "refused");
  EXPECT_EQ(read("2012-01-02 03:04:05garbage", yearFirst(), 19), expected);
  EXPECT_EQ(read("2012-01-02 03:04:05", yearFirst(), 16), "refused");
  // A separator that fills its field has no closing zero.
  std::memset(settings.DateString, '-', sizeof settings.DateString);
  EXPECT_EQ(read("02-----01-----2012 03:04:05", settings), expected);
  std::memset(&settings, '#', sizeof settings);
  library().OSGetIntlSettings(&settings, 4);
  EXPECT_EQ(settings.AMString[0], '#') << "written behind the size";
}

TEST(Time, OnlyPossibleMomentsHaveParts) {
  const RunningServer server("Timezone=1\n");
  EXPECT_TRUE(local({{25, 2440588}}).starts_with("1969-12-31 23:00:00.25 weekday 4"));
  EXPECT_TRUE(local({{8639999, 0xAB000000 | 2440588}}).starts_with("1970-01-01 22:59:59.99"));
  const TIMEDATE impossible[] = {
      {{8640000, 2440588}}, {{0, 0}}, {{0, 0xFFFFFF}}, {{0, 1721426}}};  // the last: only in GMT
  for (const TIMEDATE time : impossible) EXPECT_EQ(local(time), "refused");
}

TEST(Time, NowIsThatOfTheSystem) {
  using namespace std::chrono;
  using Hundredths = duration<std::int64_t, std::centi>;
  const auto before = floor<Hundredths>(system_clock::now());
  TIMEDATE now{};
  library().OSCurrentTIMEDATE(&now);
  const auto moment = sys_days(1970y / January / 1) +
                      days(static_cast<int>(now.Innards[1]) - 2440588) + Hundredths(now.Innards[0]);
  EXPECT_LE(before, moment);
  EXPECT_LE(moment, system_clock::now());
}

}  // namespace
}  // namespace standin_tests
