// Reports: what is read of one is the same once it is masked, and when its values are back; its
// JSON is whole, and its page lists each finding and has no markup of a value.

#include <nlohmann/json.hpp>
#include <sstream>

#include "check.h"
#include "report/findings.h"
#include "report/json.h"
#include "report/mask.h"
#include "report/page/page.h"
#include "report/report.h"
#include "report/unmask.h"

namespace {

std::vector<reader::Code> codesOf(const reader::Report& report) {
  std::vector<reader::Code> codes;
  reader::forEachFinding(report,
                         [&](const reader::Finding& finding) { codes.push_back(finding.code); });
  return codes;
}

std::size_t countOf(const std::string& text, std::string_view part) {
  std::size_t count = 0;
  for (std::size_t at = 0; (at = text.find(part, at)) != std::string::npos; at += part.size())
    ++count;
  return count;
}

std::string pageOf(const std::string& bytes) {
  std::vector<reader::ShownReport> reports;
  reports.push_back({1, bytes});
  reports.back().report = std::make_unique<reader::Report>(bytes);
  std::ostringstream page;
  reader::writePage(reports, bytes, reader::Origin::server, page);
  return page.str();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  try {
    const reader::Report report{std::string(asText(data, size))};
    reader::Pseudonyms pseudonyms(report.bytes(), {});
    const reader::MaskedParts parts(report);
    reader::collectValues(parts, pseudonyms);
    std::ostringstream masked;
    reader::writeMasked(parts, pseudonyms, masked);
    check(codesOf(reader::Report(masked.str())) == codesOf(report));
    std::ostringstream unmasked;
    reader::writeUnmasked(masked.str(), pseudonyms.all(), unmasked);
    check(codesOf(reader::Report(unmasked.str())) == codesOf(report));
    std::ostringstream json;
    reader::writeJson(report, json);
    check(nlohmann::json::accept(json.str()));
    const std::string page = pageOf(report.bytes());
    check(countOf(page, "<li data-code=") == codesOf(report).size());
    check(countOf(page, "<script") == 0 && countOf(page, "<h1>") == 1);
  } catch (const reader::NoReport&) {
    return 0;
  }
  return 0;
}
