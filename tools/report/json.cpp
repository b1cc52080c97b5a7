#include "report/json.h"

#include <algorithm>
#include <array>
#include <functional>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "report/entry_reader.h"
#include "report/findings.h"
#include "report/text.h"

namespace reader {
namespace {

using Json = nlohmann::ordered_json;
using Entries = std::span<const EntryNumber>;

constexpr std::array targetNames = {
    "",        "error", "",         "variables", "checks",          "files",   "fields",  "rows",
    "filters", "books", "messages", "result",    "import_messages", "entries", "updates", "events"};

const char* nameOf(Target target) { return targetNames.at(static_cast<std::size_t>(target)); }

constexpr std::uint32_t bit(Target target) { return 1U << static_cast<unsigned>(target); }

// What a section has besides its name and time.
std::vector<Target> targetsOf(Section section) {
  switch (section) {
    case Section::systemEnvironment:
      return {Target::variables};
    case Section::dominoEnvironmentVariables:
      return {Target::checks};
    case Section::fileCheck:
      return {Target::files};
    case Section::customerProfile:
    case Section::serverProfile:
      return {Target::fields};
    case Section::filteredUsers:
    case Section::access:
      return {Target::itself};
    case Section::configuration:
      return {Target::rows};
    case Section::senderFilter:
      return {Target::filters};
    case Section::loadingDirectory:
      return {Target::books, Target::messages, Target::result, Target::importMessages};
    case Section::importing:
      return {Target::books, Target::messages, Target::entries, Target::result,
              Target::importMessages};
    case Section::installedUpdates:
      return {Target::updates};
    case Section::events:
      return {Target::events};
    default:
      return {};
  }
}

// yyyymmddhhmmss as yyyy-mm-ddThh:mm:ss
std::string asText(std::uint64_t time) {
  constexpr std::size_t size = 14;
  std::string text = std::to_string(time);
  text.insert(0, size - text.size(), '0');
  return text.insert(12, ":").insert(10, ":").insert(8, "T").insert(6, "-").insert(4, "-");
}

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

// The label of a row stands in front of its dots.
std::string_view trimmedLabel(std::string_view label) {
  return label.substr(0, label.find_last_not_of(' ') + 1);
}

void addValues(Json& object, const Match& match) {
  for (Value value : match.all()) {
    if (value.key.empty()) continue;
    if (match.form->target == Target::rows && value.key == "label")
      value.text = trimmedLabel(value.text);
    object[std::string(value.key)] = valueOf(value);
  }
}

// Writes one section. Each of its fields takes a walk along the lines of its own.
class SectionWriter {
 public:
  SectionWriter(const Report& report, Entries entries, std::ostream& out)
      : report_(report), entries_(entries), out_(out) {}

  void write() {
    const Entry& first = report_.entries()[entries_.front()];
    survey();
    out_ << R"({"name":)" << Json(reader::nameOf(first.section)) << R"(,"time":)"
         << Json(asText(first.time));
    const bool failed = has(Target::error);
    for (const Target target : targetsOf(first.section)) {
      if (!failed || has(target)) writeField(target);
    }
    if (failed) writeError();
    if (hasOther_) writeOther();
    out_ << '}';
  }

 private:
  void forEach(const std::function<void(const Reading&)>& take) const {
    for (const EntryNumber number : entries_) {
      EntryReader reader(report_, number);
      for (Reading reading{}; reader.next(reading);) take(reading);
    }
  }

  void forEach(Target target, const std::function<void(const Reading&)>& take) const {
    forEach([&](const Reading& reading) {
      if (reading.match.form != nullptr && reading.match.form->target == target) take(reading);
    });
  }

  void survey() {
    int errors = 0;
    forEach([&](const Reading& reading) {
      if (reading.match.form != nullptr) present_ |= bit(reading.match.form->target);
      hasOther_ = hasOther_ || reading.isOther() || (isError(reading) && errors++ > 0);
    });
  }

  bool has(Target target) const { return (present_ & bit(target)) != 0; }

  static bool isError(const Reading& reading) {
    return reading.match.form != nullptr && reading.match.form->target == Target::error;
  }

  void writeField(Target target) {
    if (target == Target::itself || target == Target::result) {
      writeObject(target);
      return;
    }
    out_ << ',' << Json(nameOf(target)) << ":[";
    if (target == Target::messages || target == Target::importMessages) {
      writeTexts(target);
    } else if (has(target)) {
      writeObjects(target);
    }
    out_ << ']';
  }

  void writeObject(Target target) {
    Json object = Json::object();
    forEach(target, [&](const Reading& reading) { addValues(object, reading.match); });
    if (target == Target::result) {
      out_ << R"(,"result":)" << object;
      return;
    }
    for (const auto& [key, value] : object.items()) out_ << ',' << Json(key) << ':' << value;
  }

  void writeTexts(Target target) {
    const char* separator = "";
    forEach(target, [&](const Reading& reading) {
      out_ << separator;
      writeText(out_, withoutTabs(reading.text));
      separator = ",";
    });
  }

  void writeObjects(Target target) {
    const char* separator = "";
    Json object;
    const auto flush = [&] {
      if (object.is_null()) return;
      out_ << separator << object;
      separator = ",";
    };
    forEach(target, [&](const Reading& reading) {
      if (reading.match.form->rank == 0) {
        flush();
        object = Json::object();
      }
      addValues(object, reading.match);
    });
    flush();
  }

  void writeError() {
    bool isFirst = true;
    forEach(Target::error, [&](const Reading& reading) {
      if (isFirst) out_ << R"(,"error":)" << Json(toUtf8(reading.text));
      isFirst = false;
    });
  }

  // A second failure of one section is a line like others.
  void writeOther() {
    const char* separator = "";
    bool hadError = false;
    out_ << R"(,"lines":[)";
    forEach([&](const Reading& reading) {
      if (reading.isOther() || (isError(reading) && hadError)) {
        out_ << separator;
        writeText(out_, reading.text);
        separator = ",";
      }
      hadError = hadError || isError(reading);
    });
    out_ << ']';
  }

  const Report& report_;
  Entries entries_;
  std::ostream& out_;
  std::uint32_t present_ = 0;
  bool hasOther_ = false;
};

Json startOf(const Report& report, const Run& run) {
  for (const EntryNumber number : run.entries) {
    const Entry& entry = report.entries()[number];
    if (entry.section == Section::startingLog) return Json(asText(entry.time));
  }
  return Json();
}

void writeRun(const Report& report, const Run& run, std::ostream& out) {
  out << R"({"started":)" << startOf(report, run) << R"(,"process":)" << run.process
      << R"(,"thread":)" << run.thread << R"(,"complete":)" << Json(isComplete(report, run))
      << R"(,"sections":[)";
  const char* separator = "";
  for (Entries rest = run.entries; !rest.empty();) {
    out << separator;
    SectionWriter(report, report.takeSection(rest), out).write();
    separator = ",";
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
