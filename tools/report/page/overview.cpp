#include "report/page/overview.h"

#include <algorithm>
#include <map>
#include <span>
#include <tuple>

#include "platform/ascii.h"
#include "report/page/tables.h"

namespace reader {
namespace {

using Reports = std::vector<const ShownReport*>;

std::string inSmallLetters(std::string_view text) {
  std::string small(text);
  std::ranges::transform(small, small.begin(), platform::lowered<char>);
  return small;
}

// What differs between servers.
constexpr std::size_t traitCount = 4;

std::string_view traitOf(const ShownReport& shown, std::size_t trait) {
  const auto& versions = shown.summary.versions;
  return trait < versions.size() ? versions.at(trait) : shown.summary.configuration;
}

// The reports of each server, the newest first. Without a name each is a server of its own.
std::vector<Reports> serversOf(const std::vector<ShownReport>& reports) {
  std::map<std::pair<std::string, std::size_t>, Reports> byName;
  for (const ShownReport& shown : reports) {
    if (!shown.report) continue;
    const std::string_view name = shown.summary.server;
    byName[{inSmallLetters(name), name.empty() ? shown.number : 0}].push_back(&shown);
  }
  std::vector<Reports> servers;
  for (auto& [name, ofServer] : byName) {
    std::ranges::stable_sort(ofServer, std::ranges::greater{},
                             [](const ShownReport* shown) { return shown->summary.time; });
    servers.push_back(std::move(ofServer));
  }
  const auto rank = [](const Reports& ofServer) {
    const ShownReport& newest = *ofServer.front();
    const Findings& findings = newest.findings;
    const auto few = [&findings](Severity severity) { return SIZE_MAX - findings.count(severity); };
    return std::tuple(few(Severity::error), few(Severity::warning), few(Severity::note),
                      inSmallLetters(newest.title()), newest.number);
  };
  std::ranges::sort(servers, {}, rank);
  return servers;
}

Reports joined(const std::vector<Reports>& servers) {
  Reports reports;
  for (const Reports& ofServer : servers)
    reports.insert(reports.end(), ofServer.begin(), ofServer.end());
  return reports;
}

// What more than half of the servers have; empty if there is no such.
std::array<std::string_view, traitCount> usualTraits(const std::vector<Reports>& servers) {
  std::array<std::string_view, traitCount> usual{};
  for (std::size_t trait = 0; trait < traitCount; ++trait) {
    std::map<std::string_view, std::size_t> counts;
    for (const Reports& ofServer : servers) ++counts[traitOf(*ofServer.front(), trait)];
    for (const auto& [value, count] : counts) {
      if (count > servers.size() / 2) usual.at(trait) = value;
    }
  }
  return usual;
}

class RowWriter {
 public:
  RowWriter(Html& html, const std::vector<Reports>& servers)
      : html_(html), usual_(usualTraits(servers)) {}

  void write(const ShownReport& shown) {
    html_ << "<tr><th scope=row><a href=\"#r";
    html_.number(shown.number) << "\">";
    html_.text(shown.title()) << "</a><td>";
    html_.text(shown.summary.started.empty() ? "not known" : shown.summary.started);
    for (std::size_t trait = 0; trait < traitCount; ++trait) writeTrait(shown, trait);
    for (const Severity severity : {Severity::error, Severity::warning, Severity::note}) {
      html_ << "<td>";
      html_.number(shown.findings.count(severity));
    }
    html_ << "<td>";
    Markup separator = "";
    for (const FoundCode& found : shown.findings.codes) {
      html_ << separator;
      html_.text(nameOf(found.code)) << " (";
      html_.number(found.count) << ")";
      separator = ", ";
    }
    html_ << "\n";
  }

 private:
  void writeTrait(const ShownReport& shown, std::size_t trait) {
    const std::string_view value = traitOf(shown, trait);
    const std::string_view usual = usual_.at(trait);
    html_ << "<td>";
    html_.text(value);
    if (!value.empty() && !usual.empty() && value != usual)
      html_ << " <span class=differs>differs from most</span>";
  }

  Html& html_;
  std::array<std::string_view, traitCount> usual_;
};

void writeUnreadable(Html& html, const ShownReport& shown) {
  html << "<tr><th scope=row>";
  html.text(shown.name) << "<td colspan=9><span class=ill>\u2717 not read</span>: ";
  html.text(shown.failure) << "\n";
}

void writeHeading(Html& html, std::size_t servers, std::size_t reports, std::size_t unreadable) {
  html << "<h2 id=overview>Overview</h2>\n<p>";
  html.count(servers, "server", "servers") << " in ";
  html.count(reports, "report", "reports");
  if (unreadable > 0) {
    html << ", and ";
    html.count(unreadable, "report", "reports") << " could not be read";
  }
  html << "\n<table class=\"wide overview\"><thead><tr><th scope=col>Server<th scope=col>Started"
          "<th scope=col>Domino version<th scope=col>Core version<th scope=col>VRX version"
          "<th scope=col>Configuration<th scope=col>Errors<th scope=col>Warnings<th scope=col>Notes"
          "<th scope=col>Codes</thead><tbody>\n";
}

}  // namespace

std::vector<const ShownReport*> inOrder(const std::vector<ShownReport>& reports) {
  return joined(serversOf(reports));
}

void writeOverview(Html& html, const std::vector<ShownReport>& reports) {
  const std::vector<Reports> servers = serversOf(reports);
  const Reports readable = joined(servers);
  const std::size_t unreadable = reports.size() - readable.size();
  writeHeading(html, servers.size(), readable.size(), unreadable);
  const std::size_t few = std::min(unreadable, mostRows / 2);
  const std::size_t shownCount = std::min(readable.size(), mostRows - few);
  RowWriter writer(html, servers);
  for (const ShownReport* const shown : std::span(readable).first(shownCount)) writer.write(*shown);
  std::size_t room = mostRows - shownCount;
  for (const ShownReport& shown : reports) {
    if (shown.report || room == 0) continue;
    --room;
    writeUnreadable(html, shown);
  }
  html << "</table>\n";
  writeRest(html, reports.size());
}

}  // namespace reader
