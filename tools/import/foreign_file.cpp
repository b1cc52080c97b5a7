#include "import/foreign_file.h"

#include <algorithm>
#include <iterator>
#include <string>

#include "import/failure.h"
#include "store/letters.h"

namespace dxl {
namespace {

struct Kind {
  std::string_view beginning;  // in small letters, behind blanks and a mark
  const char* words;
};

using namespace std::string_view_literals;

constexpr Kind kinds[] = {
    {"pk\x03\x04"sv, "this is a ZIP archive: unpack it, and take the export that is in it"},
    {"\x1F\x8B"sv, "this is a gzip archive: unpack it, and take the export that is in it"},
    {"\x1A\0\0"sv, "this is the database itself: ask for its export as XML (DXL)"},
    {R"({"database")"sv, "this is a store, which needs no import: ask for the export itself"},
    {"<!doctype html"sv, "this is a page of HTML: ask for the file that was to be downloaded"},
    {"<html"sv, "this is a page of HTML: ask for the file that was to be downloaded"}};

}  // namespace

void requireXml(std::string_view beginning) {
  constexpr std::size_t enough = 256;
  constexpr std::string_view mark = "\xEF\xBB\xBF";
  std::string_view rest = beginning.substr(0, enough);
  if (rest.starts_with(mark)) rest.remove_prefix(mark.size());
  rest.remove_prefix(std::min(rest.find_first_not_of(" \t\r\n"), rest.size()));
  if (beginning.empty()) throw Flaw("the file is empty: ask for the export once more");
  const std::string text = store::lowered(rest);
  const auto* const kind = std::find_if(std::begin(kinds), std::end(kinds), [&](const Kind& one) {
    return text.starts_with(one.beginning);
  });
  if (kind != std::end(kinds)) throw Flaw(kind->words);
  // UTF-16 begins with its mark, or is refused for want of one.
  const bool isWide = text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF") ||
                      text.substr(0, 2).find('\0') != std::string::npos;
  if (!text.empty() && !text.starts_with('<') && !isWide)
    throw Flaw("this is no XML: ask for an export of the database as XML (DXL)");
}

}  // namespace dxl
