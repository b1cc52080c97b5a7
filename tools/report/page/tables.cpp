#include "report/page/tables.h"

#include <algorithm>
#include <map>
#include <span>

#include "report/page/dates.h"

namespace reader {
namespace {

struct Column {
  std::string_view key;
  Markup heading;
};

struct TableForm {
  Target target;
  Markup start;
  Markup title;
  std::span<const Column> columns;
};

constexpr Column variables[] = {{"name", "Variable"}, {"value", "Value"}};
constexpr Column checks[] = {{"token", "Name"}, {"variable", "Variable"}, {"found", "State"}};
constexpr Column files[] = {{"path", "File"}, {"found", "State"}};
constexpr Column labels[] = {{"label", "Name"}, {"value", "Value"}};
constexpr Column filters[] = {{"sender", "Sender"}, {"colour", "List"}};
constexpr Column books[] = {
    {"path", "Path"}, {"port", "Port"}, {"server", "Server"}, {"file", "File"}};
constexpr Column entries[] = {{"name", "Name"},           {"full_name", "Full name"},
                              {"type", "Type"},           {"server", "Server"},
                              {"file_path", "Mail file"}, {"replica_id", "Replica ID"},
                              {"status", "Status"},       {"ready", "Ready for import"}};
constexpr Column updates[] = {
    {"date", "Date"}, {"item", "Item"}, {"version", "Version"}, {"server", "Server"}};
constexpr Column events[] = {{"reported", "When"}, {"category", "Category"}, {"text", "Text"}};

constexpr Markup plain = "<table>";

constexpr TableForm forms[] = {
    {Target::variables, plain, "Variables", variables},
    {Target::checks, plain, "Names looked for", checks},
    {Target::files, plain, "Files", files},
    {Target::fields, plain, "Values", labels},
    {Target::rows, plain, "Settings", labels},
    {Target::filters, plain, "Senders", filters},
    {Target::books, "<table class=\"wide books\">", "Address books", books},
    {Target::entries, "<table class=\"wide entries\">", "Entries", entries},
    {Target::updates, "<table class=\"wide updates\">", "Updates", updates},
    {Target::events, plain, "Events", events}};

void writeValue(Html& html, const Object& object, std::string_view key) {
  const auto value = std::ranges::find(object, key, &Value::key);
  if (value == object.end()) return;
  if (value->kind != Kind::yes && value->kind != Kind::no) {
    html.text(value->text);
  } else if (key == "ready") {
    writeMark(html, value->kind == Kind::yes, "yes", "no");
  } else {
    writeMark(html, value->kind == Kind::yes, "found", "not found");
  }
}

// The first column is what the others are about.
void writeRow(Html& html, std::span<const Column> columns, const Object& object) {
  html << "<tr><th scope=row>";
  writeValue(html, object, columns.front().key);
  for (const Column& column : columns.subspan(1)) {
    html << "<td>";
    writeValue(html, object, column.key);
  }
  html << "\n";
}

void writeHeading(Html& html, const TableForm& form, std::size_t count) {
  html << form.start << "<caption>" << form.title << ": ";
  html.number(count) << "</caption><thead><tr>";
  for (const Column& column : form.columns) html << "<th scope=col>" << column.heading;
  html << "</thead><tbody>\n";
}

void writeRows(Html& html, const SectionContent& content, const TableForm& form) {
  std::size_t room = mostRows;
  content.forEachObject(form.target, [&](const Object& object) {
    if (room == 0) return;
    --room;
    writeRow(html, form.columns, object);
  });
}

// The earliest first; those without a date behind all others.
void writeUpdates(Html& html, const SectionContent& content) {
  constexpr std::string_view behindDates = "~";
  std::multimap<std::string_view, Object> byDate;
  content.forEachObject(Target::updates, [&](const Object& update) {
    const std::string_view date = textOf(update, "date");
    byDate.emplace(dayOf(date).empty() ? behindDates : date, update);
    if (byDate.size() > mostRows) byDate.erase(std::prev(byDate.end()));
  });
  for (const auto& [date, update] : byDate) writeRow(html, updates, update);
}

}  // namespace

void writeTable(Html& html, const SectionContent& content, Target target) {
  const TableForm& form = *std::ranges::find(forms, target, &TableForm::target);
  const std::size_t count = content.count(target);
  if (count == 0) {
    html << "<p>" << form.title << ": 0\n";
    return;
  }
  writeHeading(html, form, count);
  if (target == Target::updates) {
    writeUpdates(html, content);
  } else {
    writeRows(html, content, form);
  }
  html << "</table>\n";
  writeRest(html, count);
}

void writeMark(Html& html, bool isWell, Markup well, Markup ill) {
  if (isWell) {
    html << "<span class=well>\u2713 " << well << "</span>";
  } else {
    html << "<span class=ill>\u2717 " << ill << "</span>";
  }
}

void writeRest(Html& html, std::size_t count) {
  if (count <= mostRows) return;
  html << "<p>";
  html.number(count - mostRows) << " more are not shown.\n";
}

}  // namespace reader
