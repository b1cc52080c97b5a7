// Reports: what is read of one is the same once it is masked, and when its values are back; its
// JSON is whole.

#include <nlohmann/json.hpp>
#include <sstream>

#include "check.h"
#include "report/findings.h"
#include "report/json.h"
#include "report/mask.h"
#include "report/report.h"
#include "report/unmask.h"

namespace {

std::vector<reader::Code> codesOf(const reader::Report& report) {
  std::vector<reader::Code> codes;
  reader::forEachFinding(report,
                         [&](const reader::Finding& finding) { codes.push_back(finding.code); });
  return codes;
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
  } catch (const reader::NoReport&) {
    return 0;
  }
  return 0;
}
