#include "report/page/shown_reports.h"

#include <algorithm>
#include <functional>
#include <map>
#include <utility>

#include "report/page/dates.h"
#include "report/page/tables.h"
#include "report/section_content.h"
#include "report/text.h"

namespace reader {
namespace {

const Run& lastBegun(const Report& report) {
  const auto begin = [&report](const Run& run) {
    return report.entries()[run.entries.front()].time;
  };
  const auto& runs = report.runs();
  return *std::ranges::max_element(
      runs.rbegin(), runs.rend(),
      [&](const Run& left, const Run& right) { return begin(left) < begin(right); });
}

std::string_view serverNameIn(const SectionContent& content) {
  std::string_view server;
  content.forEachObject(Target::variables, [&server](const Object& variable) {
    if (textOf(variable, "name") == "ServerName") server = textOf(variable, "value");
  });
  return server;
}

std::string_view configurationIn(const SectionContent& content) {
  std::string_view name;
  content.forEachObject(Target::rows, [&name](const Object& row) {
    if (name.empty() && textOf(row, "label") == "ConfigurationName") name = textOf(row, "value");
  });
  return name;
}

void addFields(const SectionContent& content, Summary& summary, std::string_view& profile) {
  content.forEachObject(Target::fields, [&](const Object& field) {
    constexpr std::array<std::string_view, 3> versions = {"Domino version", "Core version",
                                                          "VRX version"};
    const std::string_view label = textOf(field, "label");
    const std::string_view value = textOf(field, "value");
    if (label == "Server name") profile = value;
    for (std::size_t at = 0; at < versions.size(); ++at) {
      if (label == versions.at(at)) summary.versions.at(at) = toUtf8(value);
    }
  });
}

}  // namespace

Findings findingsOf(const Report& report, Origin origin) {
  Findings findings;
  std::map<std::pair<std::string_view, std::string_view>, std::size_t> places;
  std::map<std::pair<int, Code>, std::size_t> codes;  // the worst severity has the least number
  forEachFinding(report, [&](const Finding& finding) {
    const Verdict verdict = verdictOn(finding, origin);
    const auto [place, isNew] =
        places.try_emplace({verdict.sentence, verdict.advice}, findings.groups.size());
    if (isNew) findings.groups.push_back({verdict, {}});
    Group& group = findings.groups[place->second];
    ++group.count;
    if (group.findings.size() < mostRows) group.findings.push_back(finding);
    ++codes[{-static_cast<int>(verdict.severity), finding.code}];
    ++findings.severities.at(static_cast<std::size_t>(verdict.severity));
    if (verdict.severity != Severity::note) findings.wrongLines.push_back(finding.line);
  });
  std::ranges::stable_sort(findings.groups, std::ranges::greater{},
                           [](const Group& group) { return group.verdict.severity; });
  for (const auto& [key, count] : codes) findings.codes.push_back({key.second, count});
  std::ranges::sort(findings.wrongLines);
  return findings;
}

Summary summaryOf(const Report& report) {
  const Run& run = lastBegun(report);
  Summary summary;
  summary.time = report.entries()[run.entries.front()].time;
  if (const auto start = startOf(report, run)) summary.started = forPeople(*start);
  summary.isComplete = isComplete(report, run);
  std::string_view profile;
  for (std::span<const EntryNumber> rest = run.entries; !rest.empty();) {
    const auto entries = report.takeSection(rest);
    const Section section = report.entries()[entries.front()].section;
    if (section == Section::systemEnvironment)
      summary.server = toUtf8(serverNameIn({report, entries}));
    if (section == Section::serverProfile) addFields({report, entries}, summary, profile);
    if (section == Section::configuration && summary.configuration.empty())
      summary.configuration = toUtf8(configurationIn({report, entries}));
  }
  if (summary.server.empty()) summary.server = toUtf8(profile);
  return summary;
}

}  // namespace reader
