#include "report/normal_form.h"

#include <algorithm>

#include "report/entry_reader.h"
#include "report/text.h"
#include "report/tool_texts.h"

namespace reader {

NormalForm::NormalForm(const Report& report) {
  for (const Run& run : report.runs()) {
    std::vector<NormalSection> sections;
    for (std::span<const EntryNumber> rest = run.entries; !rest.empty();) {
      const auto entries = report.takeSection(rest);
      const std::size_t begin = lines_.size();
      for (const EntryNumber number : entries) addEntry(report, number);
      sections.push_back({report.entries()[entries.front()].section, begin, lines_.size()});
    }
    runs_.push_back(std::move(sections));
  }
}

void NormalForm::addEntry(const Report& report, EntryNumber number) {
  const Section section = report.entries()[number].section;
  EntryReader reader(report, number);
  for (Reading reading{}; reader.next(reading);) {
    const auto values = reading.match.all();
    const bool isTestEvent = !values.empty() && values.back().kind == Kind::eventText &&
                             isTestEventText(values.back().text);
    if (!reading.isCut && !isTestEvent) addLine(section, reading.text);
  }
}

void NormalForm::addLine(Section section, std::string_view line) {
  const auto isPlain = [](char byte) { return byte != '\0' && isAscii(byte); };
  const std::string_view time = section == Section::access ? timeOfTestFile(line) : "";
  if (time.empty() && std::ranges::all_of(line, isPlain)) {
    lines_.push_back(line);
    return;
  }
  std::string changed(line);
  if (!time.empty()) {
    const auto at = static_cast<std::size_t>(time.data() - line.data());
    changed.replace(at, time.size(), time.size(), '0');
  }
  changed = toUtf8(changed);
  std::erase(changed, '\0');
  lines_.push_back(changed_.emplace_back(std::move(changed)));
}

}  // namespace reader
