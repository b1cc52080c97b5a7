#include "report/entry_reader.h"

namespace reader {

EntryReader::EntryReader(const Report& report, EntryNumber number)
    : bytes_(report.bytes()),
      entry_(report.entries()[number]),
      at_(number == 0 ? report.begin() : entry_.begin),
      line_(number == 0 ? 1 : entry_.line) {
  if (number + 1 < report.entries().size())
    bytes_ = bytes_.substr(0, report.entries()[number + 1].begin);
}

bool EntryReader::next(Reading& reading) {
  const bool isFirst = line_ == entry_.line;
  if (isFirst) at_ = entry_.textBegin;
  Line line;
  if (!takeLine(bytes_, at_, line)) return false;
  reading = {line_, line.text, isFirst, line.isCut, {}};
  if (isFirst) {
    reading.match = matchFirst(line.text);
  } else if (line_ > entry_.line && !line.isCut) {
    reading.match = matchFurther(line.text);
  }
  ++line_;
  return true;
}

Match EntryReader::matchFirst(std::string_view text) const {
  if (!entry_.isMisplaced) {
    const Match head = matchLine(entry_.section, Place::head, 0, text);
    if (head.form != nullptr) return head;
  }
  return matchLine(entry_.section, Place::event, 0, text);
}

Match EntryReader::matchFurther(std::string_view text) {
  const Match match = matchLine(entry_.section, place_, rank_, text);
  if (match.form != nullptr) {
    place_ = match.form->next;
    rank_ = match.form->rank;
  } else if (place_ == Place::created) {
    place_ = Place::result;
  }
  return match;
}

}  // namespace reader
