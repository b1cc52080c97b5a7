#include "report/page/dates.h"

#include "report/lines.h"

namespace reader {

std::string_view dayOf(std::string_view text) {
  constexpr std::string_view form = "dddd-dd-dd";
  const std::string_view day = text.substr(0, form.size());
  if (day.size() < form.size()) return {};
  for (std::size_t at = 0; at < form.size(); ++at) {
    if (form[at] == 'd' ? !isDigit(day[at]) : day[at] != form[at]) return {};
  }
  return day;
}

}  // namespace reader
