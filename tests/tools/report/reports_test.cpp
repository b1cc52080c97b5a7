// Reports and what the reader makes of them, as rows of tables.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <regex>
#include <sstream>
#include <utility>

#include "platform/code_pages.h"
#include "report/check.h"
#include "report/findings.h"
#include "report/findings_text.h"
#include "report/json.h"
#include "report/mask.h"
#include "report/pseudonym_map.h"
#include "report/text.h"
#include "report/unified_diff.h"
#include "report/unmask.h"
#include "report/verdict.h"
#include "report_text.h"
#include "support/folders.h"
#include "support/rows.h"
#include "support/temporary_folder.h"

namespace {

using reader::Report;

// Those of lines up to a number.
std::string findingsOf(const Report& report, std::ptrdiff_t last = PTRDIFF_MAX) {
  std::string findings;
  reader::forEachFinding(report, [&](const reader::Finding& finding) {
    if (std::cmp_greater(finding.line, last)) return;
    findings += findings.empty() ? "" : " ";
    findings.append(nameOf(finding.code)) += ':' + std::to_string(finding.line);
  });
  return findings;
}

std::string maskedOf(const Report& report, reader::Pseudonyms& pseudonyms) {
  const reader::MaskedParts parts(report);
  reader::collectValues(parts, pseudonyms);
  std::ostringstream out;
  reader::writeMasked(parts, pseudonyms, out);
  return out.str();
}

std::string maskedOf(const Report& report, const reader::PseudonymMap& map = {}) {
  reader::Pseudonyms pseudonyms(report.bytes(), map.all());
  return maskedOf(report, pseudonyms);
}

std::string unmaskedOf(const std::string& text, const std::deque<reader::Pseudonym>& pseudonyms) {
  std::ostringstream out;
  reader::writeUnmasked(text, pseudonyms, out);
  return out.str();
}

nlohmann::json jsonOf(const Report& report, reader::Origin origin = reader::Origin::server) {
  std::ostringstream out;
  reader::writeJson(report, out, origin);
  return nlohmann::json::parse(out.str());
}

std::string replaced(const std::string& text, const char* pattern, const char* replacement) {
  return std::regex_replace(text, std::regex(pattern), replacement);
}

// The report that a world expects, as the tool writes it.
std::string worldReport(const std::string& world) {
  const std::string shown =
      test::contentOf(test::inRepository("tests/worlds/" + world + "/expected/report.txt"));
  std::string text = reader::toLatin1(shown);
  text = replaced(text, "<entry>\t", "15-11-2026 05:03:11\t(1234:5678)\t");
  text = replaced(text, "-<time>\\.log", "-20261115050312.log");
  return replaced(replaced(text, "<CR>", "\r"), "<no line feed>\n", "");
}

TEST(Reports, ShowEachFailureOnceAndNothingElse) {
  for (const auto& [where, fields] : test::rowsOf("tools/report/findings.txt", 2))
    EXPECT_EQ(findingsOf(Report(test::reportOf(fields[0]))), fields[1]) << where;
}

TEST(Reports, OfWorldsShowTheFailuresOfTheirWorlds) {
  for (const auto& [where, fields] : test::rowsOf("tools/report/worlds.txt", 2))
    EXPECT_EQ(findingsOf(Report(worldReport(fields[0]))), fields[1]) << where;
}

std::string codesOf(const Report& report) { return replaced(findingsOf(report), ":[0-9]+", ""); }

std::string asUtf16(const std::string& utf8, bool isBigEndian) {
  std::u16string units(utf8.size(), u'\0');
  units.resize(platform::narrowToWide(65001, true, utf8, units).length);
  std::string bytes = isBigEndian ? "\xFE\xFF" : "\xFF\xFE";
  for (const char16_t unit : units) {
    const std::array halves = {static_cast<char>(unit & 0xFFU), static_cast<char>(unit >> 8U)};
    bytes.append({halves.at(isBigEndian ? 1 : 0), halves.at(isBigEndian ? 0 : 1)});
  }
  return bytes;
}

// What programs on the way do to a report: they trim lines, make two line ends of CR CR LF, put a
// mark in front, or write it in wide text.
TEST(Reports, AreReadAsTheyComeByMail) {
  for (const auto& [where, fields] : test::rowsOf("tools/report/worlds.txt", 2)) {
    const std::string text = worldReport(fields[0]);
    const Report report(text);
    EXPECT_EQ(codesOf(Report(replaced(text, "[ \t\r]+\n", "\n"))), codesOf(report)) << where;
    EXPECT_EQ(codesOf(Report(replaced(text, "\r\n", "\n\n"))), codesOf(report)) << where;
    const Report marked("\xEF\xBB\xBF" + text);
    EXPECT_EQ(findingsOf(marked), fields[1]) << where;
    EXPECT_EQ(maskedOf(marked), "\xEF\xBB\xBF" + maskedOf(report)) << where;
    for (const bool isBigEndian : {false, true})
      EXPECT_EQ(jsonOf(Report(asUtf16(reader::toUtf8(text), isBigEndian))), jsonOf(report));
  }
}

TEST(Reports, AreRefusedInWordsThatSayWhatTheyAre) {
  for (const auto& [where, fields] : test::rowsOf("tools/report/refused.txt", 2)) {
    std::string words = "taken";
    try {
      const Report report(test::reportOf(fields[0]));
    } catch (const reader::NoReport& error) {
      words = error.what();
    }
    EXPECT_TRUE(words.starts_with(fields[1])) << where << words;
  }
}

TEST(Verdicts, AreOnTheLineAndNotOnItsCodeAlone) {
  const auto rows = test::rowsOf("tools/report/verdicts.txt", 3);
  for (const auto& [where, fields] : rows) {
    const auto code = reader::codeNamed(fields[0]);
    ASSERT_TRUE(code) << where;
    const auto verdict =
        reader::verdictOn({*code, reader::Section::unknown, 1, fields[1]}, reader::Origin::server);
    const std::string words = std::string(verdict.sentence) + ' ' + std::string(verdict.advice);
    EXPECT_NE(words.find(fields[2]), std::string::npos) << where << words;
  }
  for (const reader::LineWords& line : reader::lineWords()) {
    EXPECT_TRUE(std::ranges::any_of(rows,
                                    [&](const test::TextRow& row) {
                                      return row.fields[1].find(line.begin) != std::string::npos &&
                                             row.fields[1].ends_with(line.end);
                                    }))
        << "no row for: " << line.begin << line.end;
  }
}

TEST(Verdicts, AreWrittenForPeopleInLinesThatFit) {
  for (const auto& [where, fields] : test::rowsOf("tools/report/findings_text.txt", 3)) {
    const Report report(test::reportOf(fields[1]));
    std::ostringstream out;
    std::ostringstream plain;
    const reader::TextStyle style = {std::stoul(fields[0]), fields[0].ends_with('c')};
    EXPECT_EQ(reader::writeFindingsText(report, reader::Origin::server, style, out),
              reader::writeFindings(report, reader::Origin::server, "", plain))
        << where;
    EXPECT_EQ(out.str(), fields[2]) << where;
  }
}

TEST(Verdicts, DoNotTakeAnExportForTheServer) {
  for (const auto& [where, fields] : test::rowsOf("tools/report/offline.txt", 2)) {
    const auto json = jsonOf(Report(test::reportOf(fields[0])), reader::Origin::exports);
    std::string found;
    for (const auto& finding : json["findings"]) {
      found.append(found.empty() ? "" : " ").append(finding["severity"].get<std::string>());
      found += ':' + finding["line"].dump() + ':' + finding["text"].get<std::string>();
    }
    EXPECT_EQ(found, fields[1]) << where;
  }
}

TEST(Reports, AreMaskedInTheirPlacesAndKeepTheirFindings) {
  for (const auto& [where, fields] : test::rowsOf("tools/report/masked.txt", 2))
    EXPECT_EQ(maskedOf(Report(test::reportOf(fields[0]))), test::reportOf(fields[1])) << where;
  std::string shown;  // more names than the smallest table has places for
  std::string masked;
  for (int i = 0; i < 400; ++i) {
    const std::string number = std::to_string(i % 200 + 1);
    shown.append("@CUSTOMERPROFILE:\n\t\t\t\t\tContact(n").append(number);
    shown.append("x)\n@Could not count users: n").append(number).append("x\n");
    masked.append("@CUSTOMERPROFILE:\n\t\t\t\t\tContact(person-").append(number);
    masked.append(")\n@Could not count users: person-").append(number).append("\n");
  }
  EXPECT_EQ(maskedOf(Report(test::reportOf(shown))), test::reportOf(masked));
  for (const char* file : {"tools/report/findings.txt", "tools/report/worlds.txt"}) {
    for (const auto& [where, fields] : test::rowsOf(file, 2)) {
      const bool isWorld = file == std::string("tools/report/worlds.txt");
      const Report report(isWorld ? worldReport(fields[0]) : test::reportOf(fields[0]));
      reader::Pseudonyms pseudonyms(report.bytes(), {});
      const std::string text = maskedOf(report, pseudonyms);
      EXPECT_EQ(findingsOf(Report(text)), fields[1]) << where;
      // A value in its doubled form comes back as its place has it.
      EXPECT_EQ(unmaskedOf(text, pseudonyms.all()),
                replaced(report.bytes(), "h\xc3\x83\xc2\xb8", "h\xc3\xb8"))
          << where;
    }
  }
}

TEST(Reports, GetTheirValuesBackAndSoDoAnswers) {
  const reader::PseudonymMap map(
      R"({"format":1,"values":{"person":{"J\u00f6rg":1},"server":{"a\u0080":1},"text":{"t":1},
      "replica-id":{"C1":1},"mail":{"x@y":1},"domain":{"\u00c3\u00a9!":12}}})");
  for (const auto& [where, fields] : test::rowsOf("tools/report/unmasked.txt", 2))
    EXPECT_EQ(unmaskedOf(test::reportOf(fields[0]), map.all()), test::reportOf(fields[1])) << where;
}

TEST(Reports, AreJsonWithNothingLost) {
  for (const auto& [where, fields] : test::rowsOf("tools/report/json.txt", 2)) {
    nlohmann::json sections = jsonOf(Report(test::reportOf(fields[0])))["runs"][0]["sections"];
    for (auto& section : sections) section.erase("time");
    EXPECT_EQ(sections, nlohmann::json::parse(fields[1])) << where;
  }
}

TEST(Reports, DifferInWhatRunsDoNotChangeByThemselves) {
  for (const auto& [where, fields] : test::rowsOf("tools/report/differences.txt", 3)) {
    const Report before(test::reportOf(fields[0]));
    const Report after(test::reportOf(fields[1]));
    std::ostringstream out;
    EXPECT_EQ(reader::writeDifference({"a", before}, {"b", after}, out), !fields[2].empty());
    EXPECT_EQ(out.str(), fields[2].empty() ? "" : "--- a\n+++ b\n" + fields[2]) << where;
  }
}

// What stood whole in the report stays a finding; what is cut is none, and nothing is invented.
TEST(Reports, AreReadWhereverTheyAreCut) {
  const std::string whole = worldReport("odd_directory");
  const Report wholeReport(whole);
  const std::string findings = findingsOf(wholeReport);
  for (std::size_t size = whole.find('\n') + 1; size <= whole.size(); ++size) {
    const Report report(whole.substr(0, size));
    std::string part = findingsOf(report);
    part.resize(std::min(part.find("no-end"), part.size()));
    EXPECT_TRUE((findings + " ").starts_with(part)) << size;
    const reader::Entry& last = report.entries().back();
    const bool isTold = last.section != reader::Section::configuration;  // by what follows, if not
    const auto lines = isTold ? std::count(whole.data(), whole.data() + size, '\n')
                              : static_cast<std::ptrdiff_t>(last.line) - 1;
    EXPECT_TRUE(part.starts_with(findingsOf(wholeReport, lines))) << size;
    constexpr std::size_t sample = 31;
    if (size % sample != 0 && size != whole.size()) continue;
    EXPECT_EQ(findingsOf(Report(maskedOf(report))), findingsOf(report)) << size;
    EXPECT_EQ(jsonOf(report)["runs"][0]["complete"], size == whole.size()) << size;
  }
  for (const char* text : {"", "\n", "15-11-2026 05:03:11\t(1:2)\tSTARTING LOG", "15-11-2026\n"})
    EXPECT_THROW(Report{text}, reader::NoReport) << text;
}

TEST(Pseudonyms, AreKeptInAMapAndNoOtherFileIsOne) {
  const std::string first =
      test::reportOf("@SERVERPROFILE:\n\t\t\t\t\tServer name(m\x80\xc3\xa9\xff)\n");
  const Report report(first);
  reader::Pseudonyms pseudonyms(report.bytes(), {});
  const reader::MaskedParts parts(report);
  reader::collectValues(parts, pseudonyms);
  const reader::PseudonymMap map(reader::asMap(pseudonyms.all()));
  const Report next(test::reportOf(
      "@SYSTEM ENVIRONMENT:\n\t\t\t\t\tServerName=b\n@SERVERPROFILE:\n\t\t\t\t\tServer "
      "name(m\x80\xc3\xa9\xff)\n"));
  EXPECT_EQ(maskedOf(next, map),
            test::reportOf("@SYSTEM ENVIRONMENT:\n\t\t\t\t\tServerName=server-2\n"
                           "@SERVERPROFILE:\n\t\t\t\t\tServer name(server-1)\n"));
  for (const char* text :
       {"{}", "[]", R"({"format":2,"values":{}})", R"({"format":1,"values":[]})",
        R"({"format":1,"values":{"x":{}}})", R"({"format":1,"values":{"text":{"a":0}}})",
        R"({"format":1,"values":{"text":{"a":1,"b":1}}})",
        R"({"format":1,"values":{"text":{"\u0100":1}}})",
        R"({"format":1,"values":{"text":{"":1}}})"})
    EXPECT_THROW(reader::PseudonymMap{text}, reader::BadMap) << text;
}

}  // namespace
