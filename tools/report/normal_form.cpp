#include "report/normal_form.h"

#include <algorithm>
#include <array>
#include <utility>

#include "report/entry_reader.h"
#include "report/text.h"
#include "report/tool_texts.h"

namespace reader {
namespace {

using Lines = std::vector<std::string_view>;

bool isTestEvent(const Reading& reading) {
  const auto values = reading.match.all();
  return !values.empty() && values.back().kind == Kind::eventText &&
         isTestEventText(values.back().text);
}

void append(Lines& lines, const Lines& more) {
  lines.insert(lines.end(), more.begin(), more.end());
}

}  // namespace

// The lines of all batches of an import, part by part: where a batch ends says nothing, and one
// person more moves all ends behind it.
class NormalForm::ImportParts {
 public:
  void beginBatch() {
    ++batches_;
    part_ = Part::beginning;
    beginning_.clear();
  }

  void add(const Reading& reading, std::string_view line) {
    const LineForm* const form = reading.match.form;
    if (form != nullptr && form->target == Target::entries) part_ = Part::entries;
    if (form != nullptr && (form->next == Place::result || form->next == Place::created))
      beginResult();
    linesOf(part_).push_back(line);
    // Its title is the end of a result, which no message moves.
    if (form != nullptr && form->next == Place::importMessages) part_ = Part::messages;
  }

  void endBatch() {
    areSame_ = areSame_ && (batches_ == 1 || beginning_ == firstBeginning_);
    if (batches_ == 1) firstBeginning_ = beginning_;
    append(beginnings_, beginning_);
  }

  void writeTo(Lines& lines) const {
    append(lines, areSame_ ? firstBeginning_ : beginnings_);
    for (const Lines& part : parts_) append(lines, part);
  }

 private:
  enum class Part : std::uint8_t { entries, result, messages, beginning };

  Lines& linesOf(Part part) {
    return part == Part::beginning ? beginning_ : parts_.at(static_cast<std::size_t>(part));
  }

  // The blank lines in front of a result are its own.
  void beginResult() {
    if (part_ == Part::result) return;
    Lines& before = linesOf(part_);
    const auto blanks = std::find_if_not(before.rbegin(), before.rend(), isBlank).base();
    part_ = Part::result;
    Lines& result = linesOf(part_);
    result.insert(result.end(), blanks, before.end());
    before.erase(blanks, before.end());
  }

  std::size_t batches_ = 0;
  Part part_ = Part::beginning;
  Lines beginning_;
  Lines firstBeginning_;
  Lines beginnings_;
  bool areSame_ = true;
  std::array<Lines, 3> parts_;
};

NormalForm::NormalForm(const Report& report) {
  for (const Run& run : report.runs()) {
    std::vector<NormalSection> sections;
    bool hasImport = false;
    for (std::span<const EntryNumber> rest = run.entries; !rest.empty();) {
      const auto entries = report.takeSection(rest);
      const Section section = report.entries()[entries.front()].section;
      const std::size_t begin = lines_.size();
      if (section != Section::importing) {
        for (const EntryNumber number : entries) addEntry(report, number);
      } else if (!std::exchange(hasImport, true)) {
        addImport(report, run);
      } else {
        continue;
      }
      sections.push_back({section, begin, lines_.size()});
    }
    runs_.push_back(std::move(sections));
  }
}

void NormalForm::addEntry(const Report& report, EntryNumber number) {
  const Section section = report.entries()[number].section;
  EntryReader reader(report, number);
  for (Reading reading{}; reader.next(reading);) {
    if (!reading.isCut && !isTestEvent(reading))
      lines_.push_back(normalLine(section, reading.text));
  }
}

void NormalForm::addImport(const Report& report, const Run& run) {
  ImportParts parts;
  for (const EntryNumber number : run.entries) {
    if (report.entries()[number].section != Section::importing) continue;
    parts.beginBatch();
    EntryReader reader(report, number);
    for (Reading reading{}; reader.next(reading);) {
      if (!reading.isCut) parts.add(reading, normalLine(Section::importing, reading.text));
    }
    parts.endBatch();
  }
  parts.writeTo(lines_);
}

std::string_view NormalForm::normalLine(Section section, std::string_view line) {
  const auto isPlain = [](char byte) { return byte != '\0' && isAscii(byte); };
  const std::string_view time = section == Section::access ? timeOfTestFile(line) : "";
  if (time.empty() && std::ranges::all_of(line, isPlain)) return line;
  std::string changed(line);
  if (!time.empty()) {
    const auto at = static_cast<std::size_t>(time.data() - line.data());
    changed.replace(at, time.size(), time.size(), '0');
  }
  changed = toUtf8(changed);
  std::erase(changed, '\0');
  return changed_.emplace_back(std::move(changed));
}

}  // namespace reader
