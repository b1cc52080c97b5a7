// The codes of findings, and what there is to say of each.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace reader {

enum class Code : std::uint8_t {
  none,
  notWired,
  fileMissing,
  customer,
  server,
  users,
  configuration,
  noActive,
  severalActive,
  access,
  senderFilter,
  noServerName,
  books,
  load,
  entry,
  import,
  updates,
  createEvent,
  readEvents,
  event,
  noEnd,
  overwritten,
  lateStart,
  severalRuns
};

/// How much a finding means, the least first: usual, or of the report alone; a part of the add-on
/// does not work; mail is not filtered, or the add-on does not work.
enum class Severity : std::uint8_t { note, warning, error };

/// A code, in words for an administrator who has never seen the tool.
struct CodeWords {
  std::string_view name;
  Severity severity = Severity::note;
  std::string_view sentence{};  ///< What it means.
  std::string_view advice{};    ///< What to do.
  std::string_view look{};      ///< What else in the report tells more.
  /// The same for a finding that needs the server, in a report from an export; it is a note there.
  std::string_view exportSentence{};
  std::string_view exportAdvice{};
  std::string_view lines{};  ///< Which lines give it, where their forms alone do not tell.
};

/// Lines of a code that have words of their own: those with this beginning and this end. Where the
/// sentence is empty it is that of the code.
struct LineWords {
  Code code;
  std::string_view begin;
  std::string_view end;
  std::string_view sentence;
  std::string_view advice;
};

/// Each but Code::none.
std::span<const Code> allCodes();

const CodeWords& wordsOf(Code code);

/// Of those that fit one line the first counts.
std::span<const LineWords> lineWords();

std::string_view nameOf(Code code);
std::optional<Code> codeNamed(std::string_view name);
std::string_view nameOf(Severity severity);
std::optional<Severity> severityNamed(std::string_view name);

}  // namespace reader
