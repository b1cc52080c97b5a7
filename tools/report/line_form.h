// The lines that a report can hold, as a table of patterns.
//
// A pattern is the text of the line behind its tabs. "{key}" in it is a value, which ends where the
// text behind it begins, and "{key:kind}" one that masking or JSON treats in its own way.
// "{key=text}" is that text, with a key. "{key:yes}" and "{key:no}" take no text. "{dots}" is three
// dots or more. A text that begins with ")" may lack where a line feed in the value broke the line.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "report/code.h"
#include "report/section.h"

namespace reader {

/// What a value is, for masking.
enum class Kind : std::uint8_t {
  plain,
  organization,
  person,
  mail,
  sender,  // an address or a domain
  server,
  replicaId,
  path,
  pathList,    // paths with commas between them
  filePath,    // a folder, and behind it one of the tool's own file names
  serverPath,  // perhaps with a server in front
  text,
  eventText,
  message,  // words of the tool and of the library, with values in them
  number,
  yes,
  no
};

/// Where in the JSON of a section a line goes.
enum class Target : std::uint8_t {
  title,  // nowhere
  error,
  itself,  // its values are fields of the section
  variables,
  checks,
  files,
  fields,
  rows,
  filters,
  books,
  messages,
  result,
  importMessages,
  entries,
  updates,
  events
};

/// Where in its entry a line may stand. Its own lines move the place on.
enum class Place : std::uint8_t {
  head,   // the first line; it tells the section
  event,  // the first line, where nothing but its neighbours tells the section
  body,
  rows,
  messages,
  entry,
  result,
  created,
  importMessages
};

struct LineForm {
  std::uint32_t sections;  // a bit for each
  Place place;
  std::size_t tabs;
  std::string_view pattern;
  Target target;
  Place next;
  Code code = Code::none;  // what the line is a finding of
  int rank = 0;            // among the lines of one object, which keep their order; 0 begins one
};

struct Value {
  std::string_view key;
  Kind kind = Kind::plain;
  std::string_view text;
};

/// A line of a report, and what is known of it.
struct Match {
  const LineForm* form = nullptr;  ///< None where the line is nothing that the tool writes there.
  std::array<Value, 4> values{};
  std::size_t count = 0;

  std::span<const Value> all() const { return {values.data(), count}; }
};

/// The third line of the configuration, which alone tells its section.
inline constexpr std::string_view configurationTitle = "\tQUELLBRIGHT CONFIGURATION";

/// The form of a line of `section` at `place` that stands behind those of `rank` in its object.
Match matchLine(Section section, Place place, int rank, std::string_view line);

/// The form of an entry's first line that tells its section.
Match matchHead(std::string_view line);

/// The one section of a form of Place::head.
Section sectionOf(const LineForm& form);

}  // namespace reader
