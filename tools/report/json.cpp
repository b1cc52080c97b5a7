#include "report/json.h"

#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <utility>

#include "report/findings.h"
#include "report/section_content.h"
#include "report/text.h"

namespace reader {
namespace {

using Json = nlohmann::ordered_json;

constexpr std::array targetNames = {
    "",        "error", "",         "variables", "checks",          "files",   "fields",  "rows",
    "filters", "books", "messages", "result",    "import_messages", "entries", "updates", "events"};

const char* nameOf(Target target) { return targetNames.at(static_cast<std::size_t>(target)); }

bool isPlain(char byte) { return byte >= ' ' && byte <= '~' && byte != '"' && byte != '\\'; }

// Most texts are what they look like.
void writeText(std::ostream& out, std::string_view bytes) {
  if (std::ranges::all_of(bytes, isPlain)) {
    out << '"' << bytes << '"';
  } else {
    out << Json(toUtf8(bytes));
  }
}

Json valueOf(const Value& value) {
  switch (value.kind) {
    case Kind::number:
      return Json(std::stoull(std::string(value.text)));
    case Kind::yes:
    case Kind::no:
      return Json(value.kind == Kind::yes);
    default:
      return Json(toUtf8(value.text));
  }
}

Json jsonOf(const Object& object) {
  Json json = Json::object();
  for (const Value& value : object) json[std::string(value.key)] = valueOf(value);
  return json;
}

// Writes one section. What it holds goes out as it is read.
class SectionWriter {
 public:
  SectionWriter(const SectionContent& content, std::ostream& out) : content_(content), out_(out) {}

  void write() {
    out_ << R"({"name":)" << Json(reader::nameOf(content_.section())) << R"(,"time":)"
         << Json(content_.time());
    for (const Target target : content_.targets()) writeField(target);
    if (content_.error()) out_ << R"(,"error":)" << Json(toUtf8(*content_.error()));
    if (content_.otherCount() > 0) writeOther();
    out_ << '}';
  }

 private:
  void writeField(Target target) {
    if (target == Target::itself) {
      const Json fields = jsonOf(content_.object(target));
      for (const auto& [key, value] : fields.items()) out_ << ',' << Json(key) << ':' << value;
    } else if (target == Target::result) {
      out_ << R"(,"result":)" << jsonOf(content_.object(target));
    } else {
      writeList(target);
    }
  }

  void writeList(Target target) {
    out_ << ',' << Json(nameOf(target)) << ":[";
    const char* separator = "";
    if (target == Target::messages || target == Target::importMessages) {
      content_.forEachMessage(target, [&](std::string_view text) {
        out_ << std::exchange(separator, ",");
        writeText(out_, text);
      });
    } else {
      content_.forEachObject(target, [&](const Object& object) {
        out_ << std::exchange(separator, ",") << jsonOf(object);
      });
    }
    out_ << ']';
  }

  void writeOther() {
    const char* separator = "";
    out_ << R"(,"lines":[)";
    content_.forEachOther([&](std::string_view text) {
      out_ << std::exchange(separator, ",");
      writeText(out_, text);
    });
    out_ << ']';
  }

  const SectionContent& content_;
  std::ostream& out_;
};

void writeRun(const Report& report, const Run& run, std::ostream& out) {
  const std::optional<std::string> start = startOf(report, run);
  out << R"({"started":)" << (start ? Json(*start) : Json()) << R"(,"process":)" << run.process
      << R"(,"thread":)" << run.thread << R"(,"complete":)" << Json(isComplete(report, run))
      << R"(,"sections":[)";
  const char* separator = "";
  for (std::span<const EntryNumber> rest = run.entries; !rest.empty();) {
    out << std::exchange(separator, ",");
    SectionWriter(SectionContent(report, report.takeSection(rest)), out).write();
  }
  out << "]}";
}

void writeFindings(const Report& report, Origin origin, std::ostream& out) {
  const char* separator = "";
  forEachFinding(report, [&](const Finding& finding) {
    const Verdict verdict = verdictOn(finding, origin);
    out << separator << R"({"code":)" << Json(reader::nameOf(finding.code)) << R"(,"severity":)"
        << Json(reader::nameOf(verdict.severity)) << R"(,"section":)"
        << Json(reader::nameOf(finding.section)) << R"(,"line":)" << finding.line << R"(,"text":)";
    writeText(out, withoutTabs(finding.text));
    out << R"(,"sentence":)" << Json(verdict.sentence) << R"(,"advice":)" << Json(verdict.advice)
        << '}';
    separator = ",";
  });
}

}  // namespace

void writeJson(const Report& report, std::ostream& out, Origin origin, const std::string& file) {
  out << R"({"format":1,)";
  if (!file.empty()) out << R"("file":)" << Json(file) << ',';
  out << R"("runs":[)";
  const char* separator = "";
  for (const Run& run : report.runs()) {
    out << separator;
    writeRun(report, run, out);
    separator = ",";
  }
  out << R"(],"findings":[)";
  writeFindings(report, origin, out);
  out << "]}\n";
}

}  // namespace reader
