#include "report/masked_parts.h"

#include <algorithm>

#include "report/entry_reader.h"
#include "report/lines.h"
#include "report/tool_texts.h"

namespace reader {
namespace {

using Take = MaskedParts::Take;

constexpr std::string_view portMark = "!!!";
constexpr std::string_view serverMark = "!!";

// The name of every server's own directory tells nobody anything.
bool isUsual(std::string_view value) { return value == "names.nsf" || value == "names"; }

void takeValue(MaskKind kind, std::string_view value, const Take& take) {
  if (!value.empty() && !isUsual(value)) take(kind, value);
}

void takeList(std::string_view list, const Take& take) {
  while (!list.empty()) {
    std::string_view item = list.substr(0, list.find(','));
    list.remove_prefix(std::min(item.size() + 1, list.size()));
    while (item.starts_with(' ')) item.remove_prefix(1);
    while (item.ends_with(' ')) item.remove_suffix(1);
    takeValue(MaskKind::path, item, take);
  }
}

// What tells the section of an entry stays, wherever it stands, so that the masked report is read
// as this one is: the beginning of a first line, a title, and the bracket of an event whose
// beginning is lost.
void takeOther(const Reading& reading, bool isOverwritten, const Take& take) {
  constexpr std::string_view bracket = " [";
  const std::string_view text = withoutTabs(reading.text);
  if (reading.text == configurationTitle) return;
  const Match head = reading.isFirst ? matchHead(reading.text) : Match{};
  for (const Value& value : head.all()) {
    if (value.kind != Kind::plain && value.kind != Kind::number)
      takeValue(MaskKind::text, value.text, take);
  }
  if (head.form != nullptr) return;
  const std::size_t at = isOverwritten && reading.isFirst ? text.find(bracket) : text.size();
  takeValue(MaskKind::text, text.substr(0, at), take);
  if (at < text.size()) takeValue(MaskKind::text, text.substr(at + bracket.size()), take);
}

using TakeReading = std::function<void(const Reading&)>;

void forEachReading(const Report& report, const TakeReading& take) {
  for (EntryNumber number = 0; number < report.entries().size(); ++number) {
    EntryReader reader(report, number);
    for (Reading reading{}; reader.next(reading);) take(reading);
  }
}

}  // namespace

// The names are of use only where a mark stands that may be part of one.
MaskedParts::MaskedParts(const Report& report) : report_(report) {
  if (report.bytes().find(portMark) == std::string::npos) return;
  forEachReading(report, [this](const Reading& reading) {
    for (const Value& value : reading.match.all()) {
      if (value.kind == Kind::server && value.text.ends_with('!')) oddServers_.insert(value.text);
    }
  });
}

void MaskedParts::forEach(const Take& take) const {
  forEachReading(report_, [&](const Reading& reading) {
    if (reading.isOther()) takeOther(reading, report_.isOverwritten(), take);
    for (const Value& value : reading.match.all()) takePart(value, take);
  });
}

void MaskedParts::takePart(const Value& value, const Take& take) const {
  const std::string_view text = value.text;
  switch (value.kind) {
    case Kind::organization:
      return takeValue(MaskKind::organization, text, take);
    case Kind::person:
      return takeValue(MaskKind::person, text, take);
    case Kind::mail:
      return takeValue(MaskKind::mail, text, take);
    case Kind::sender:
      return takeValue(text.find('@') == std::string_view::npos ? MaskKind::domain : MaskKind::mail,
                       text, take);
    case Kind::server:
      return takeValue(MaskKind::server, text, take);
    case Kind::replicaId:
      return takeValue(MaskKind::replicaId, text, take);
    case Kind::path:
      return takeValue(MaskKind::path, text, take);
    case Kind::pathList:
      return takeList(text, take);
    case Kind::filePath:
      return takeValue(MaskKind::path, folderOf(text), take);
    case Kind::serverPath:
      return takeServerPath(text, take);
    case Kind::text:
      return takeValue(MaskKind::text, text, take);
    case Kind::eventText:
      if (!isTestEventText(text)) takeValue(MaskKind::text, text, take);
      return;
    case Kind::message:
      return takeValue(MaskKind::message, text, take);
    default:
      return;
  }
}

// [port!!!][server!!]path
void MaskedParts::takeServerPath(std::string_view value, const Take& take) const {
  const std::size_t port = value.find(portMark);
  if (port != std::string_view::npos && endOfServer(value) != port + 1)
    value.remove_prefix(port + portMark.size());
  const std::size_t server = endOfServer(value);
  if (server != std::string_view::npos) {
    takeValue(MaskKind::server, value.substr(0, server), take);
    value.remove_prefix(server + serverMark.size());
  }
  takeValue(MaskKind::path, value, take);
}

// The first "!" of three is the server's own where one has that name.
std::size_t MaskedParts::endOfServer(std::string_view value) const {
  const std::size_t end = value.find(serverMark);
  const bool isOdd = end != std::string_view::npos && value.substr(end).starts_with(portMark) &&
                     oddServers_.contains(value.substr(0, end + 1));
  return isOdd ? end + 1 : end;
}

}  // namespace reader
