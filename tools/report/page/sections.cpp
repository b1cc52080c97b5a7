#include "report/page/sections.h"

#include <algorithm>
#include <functional>
#include <map>
#include <optional>

#include "report/page/bars.h"
#include "report/page/dates.h"
#include "report/page/tables.h"
#include "report/section_content.h"

namespace reader {
namespace {

constexpr std::array<Markup, 17> titles = {"Start",
                                           "Environment",
                                           "Variables of the environment",
                                           "Files",
                                           "Customer profile",
                                           "Server profile",
                                           "Filtered users",
                                           "Configuration",
                                           "Write access",
                                           "Sender filter",
                                           "Import of the directory",
                                           "Address books",
                                           "Import",
                                           "Installed updates",
                                           "Test events",
                                           "Events",
                                           "Unknown lines"};

Markup titleOf(Section section) { return titles.at(static_cast<std::size_t>(section)); }

using TakeLine = std::function<void(std::string_view)>;

void writeLines(Html& html, Markup title, std::size_t count,
                const std::function<void(const TakeLine&)>& forEach) {
  html << "<p>" << title << ": ";
  html.number(count) << "\n";
  if (count == 0) return;
  html << "<ul class=lines>\n";
  std::size_t room = mostRows;
  forEach([&](std::string_view line) {
    if (room == 0) return;
    --room;
    html << "<li>";
    html.line(line) << "\n";
  });
  html << "</ul>\n";
  writeRest(html, count);
}

void writeResult(Html& html, const Object& result) {
  std::vector<Bar> bars;
  for (const auto& [key, label] : {std::pair("processed", "processed"),
                                   {"created", "created"},
                                   {"updated", "updated"},
                                   {"failed", "failed"}}) {
    const std::string_view digits = textOf(result, key);
    if (!digits.empty()) bars.push_back({label, std::stoull(std::string(digits))});
  }
  if (bars.empty()) return;
  html << "<p>Result\n";
  writeBars(html, bars);
}

void writeDays(Html& html, const SectionContent& content) {
  constexpr std::size_t mostDays = 60;
  std::map<std::string_view, std::uint64_t> days;
  std::uint64_t withoutDay = 0;
  content.forEachObject(Target::events, [&](const Object& event) {
    const std::string_view reported = textOf(event, "reported");
    const std::string_view word = reported.substr(0, reported.find(' '));
    ++(dayOf(word).size() == word.size() && !word.empty() ? days[word] : withoutDay);
  });
  std::uint64_t earlier = 0;
  const std::size_t earlierDays = days.size() - std::min(days.size(), mostDays);
  auto first = days.begin();
  for (std::size_t day = 0; day < earlierDays; ++day) earlier += first++->second;
  std::vector<Bar> bars;
  for (; first != days.end(); ++first) bars.push_back({std::string(first->first), first->second});
  if (withoutDay > 0) bars.push_back({"without a day", withoutDay});
  if (bars.empty()) return;
  html << "<p>Events of each day";
  if (earlierDays > 0) {
    html << ", of the last 60 days; ";
    html.count(earlier, "event", "events") << " of ";
    html.count(earlierDays, "day", "days") << " before are not shown";
  }
  html << "\n";
  writeBars(html, bars);
}

class SectionWriter {
 public:
  SectionWriter(Html& html, const SectionContent& content) : html_(html), content_(content) {}

  void write(bool isOpen) {
    html_ << "<details data-section=";
    html_.text(nameOf(content_.section()));
    if (isOpen) html_ << " open";
    html_ << "><summary><h4>" << titleOf(content_.section()) << "</h4></summary>\n<p class=time>";
    html_.text(forPeople(content_.time())) << "\n";
    if (content_.error()) {
      html_ << "<p class=ill>\u2717 ";
      html_.text(*content_.error()) << "\n";
    }
    for (const Target target : content_.targets()) writeField(target);
    if (content_.otherCount() > 0) {
      writeLines(html_, "Lines that no rule takes", content_.otherCount(),
                 [this](const TakeLine& take) { content_.forEachOther(take); });
    }
    html_ << "</details>\n";
  }

 private:
  void writeField(Target target) {
    switch (target) {
      case Target::itself:
        return writeItself(content_.object(target));
      case Target::result:
        return writeResult(html_, content_.object(target));
      case Target::messages:
        return writeMessages(target, "Messages");
      case Target::importMessages:
        return writeMessages(target, "Messages of the import");
      case Target::events:
        writeDays(html_, content_);
        return writeTable(html_, content_, target);
      default:
        return writeTable(html_, content_, target);
    }
  }

  void writeMessages(Target target, Markup title) {
    writeLines(html_, title, content_.count(target),
               [&](const TakeLine& take) { content_.forEachMessage(target, take); });
  }

  // The number of users, or the test file and whether it could be written.
  void writeItself(const Object& values) {
    for (const Value& value : values) {
      html_ << "<p>";
      if (value.kind == Kind::number) {
        html_ << "Filtered users: ";
        html_.number(std::stoull(std::string(value.text)));
      } else if (value.kind == Kind::yes || value.kind == Kind::no) {
        writeMark(html_, value.kind == Kind::yes, "can be written", "cannot be written");
      } else {
        html_ << "Test file: ";
        html_.text(value.text);
      }
      html_ << "\n";
    }
  }

  Html& html_;
  const SectionContent& content_;
};

class RunWriter {
 public:
  RunWriter(Html& html, const ShownReport& shown) : html_(html), shown_(shown) {}

  void write(const Run& run) {
    std::array<std::size_t, titles.size()> counts{};
    for (std::span<const EntryNumber> rest = run.entries; !rest.empty();) {
      const auto entries = shown_.report->takeSection(rest);
      const Section section = shown_.report->entries()[entries.front()].section;
      if (++counts.at(static_cast<std::size_t>(section)) > mostRows) continue;
      SectionWriter(html_, {*shown_.report, entries}).write(isAnyWrong(entries));
    }
    for (std::size_t at = 0; at < counts.size(); ++at) {
      if (counts.at(at) <= mostRows) continue;
      html_ << "<p>" << titles.at(at) << ": ";
      html_.number(counts.at(at) - mostRows) << " more of these sections are not shown.\n";
    }
  }

 private:
  bool isAnyWrong(std::span<const EntryNumber> entries) const {
    return std::ranges::any_of(entries, [this](EntryNumber number) { return isWrong(number); });
  }

  bool isWrong(EntryNumber number) const {
    const std::vector<Entry>& entries = shown_.report->entries();
    const auto& wrong = shown_.findings.wrongLines;
    const auto found = std::ranges::lower_bound(wrong, entries[number].line);
    const bool isLast = number + 1 == entries.size();
    return found != wrong.end() && (isLast || *found < entries[number + 1].line);
  }

  Html& html_;
  const ShownReport& shown_;
};

void writeRunHeading(Html& html, const Report& report, const Run& run) {
  const std::optional<std::string> start = startOf(report, run);
  html << "<h3>";
  if (report.runs().size() == 1) {
    html << "Sections";
  } else if (start) {
    html << "Run of ";
    html.text(forPeople(*start));
  } else {
    html << "Run whose beginning is lost";
  }
  html << "</h3>\n";
}

}  // namespace

void writeSections(Html& html, const ShownReport& shown) {
  const std::vector<Run>& runs = shown.report->runs();
  for (std::size_t at = 0; at < std::min(runs.size(), mostRows); ++at) {
    writeRunHeading(html, *shown.report, runs[at]);
    RunWriter(html, shown).write(runs[at]);
  }
  if (runs.size() > mostRows) {
    html << "<p>";
    html.count(runs.size() - mostRows, "more run is", "more runs are") << " not shown.\n";
  }
}

}  // namespace reader
