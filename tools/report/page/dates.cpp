#include "report/page/dates.h"

#include "report/lines.h"

namespace reader {
namespace {

constexpr std::string_view dayForm = "dddd-dd-dd";

}  // namespace

std::string_view dayOf(std::string_view text) {
  const std::string_view day = text.substr(0, dayForm.size());
  if (day.size() < dayForm.size()) return {};
  for (std::size_t at = 0; at < dayForm.size(); ++at) {
    if (dayForm[at] == 'd' ? !isDigit(day[at]) : day[at] != dayForm[at]) return {};
  }
  return day;
}

std::string forPeople(std::string time) { return time.replace(dayForm.size(), 1, " "); }

}  // namespace reader
