#include "standin/formula_lexer.h"

#include <algorithm>
#include <charconv>

#include "standin/formula.h"

namespace standin {
namespace {

bool isDigit(char c) { return c >= '0' && c <= '9'; }

bool beginsName(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_' || c == '$';
}

std::size_t nameLength(std::string_view text) {
  const auto* const end = std::find_if_not(text.begin(), text.end(),
                                           [](char c) { return beginsName(c) || isDigit(c); });
  return static_cast<std::size_t>(end - text.begin());
}

bool beginsNumber(std::string_view text) {
  if (text.starts_with('-')) text.remove_prefix(1);
  return !text.empty() && isDigit(text.front());
}

}  // namespace

Token FormulaLexer::take(TokenKind kind, std::size_t length) {
  Token token;
  token.kind = kind;
  token.offset = offset_;
  token.spelling = rest().substr(0, length);
  offset_ += length;
  return token;
}

Token FormulaLexer::takeText() {
  std::string text;
  for (std::size_t at = 1; at < rest().size(); ++at) {
    if (rest()[at] == '"') {
      Token token = take(TokenKind::text, at + 1);
      token.text = std::move(text);
      return token;
    }
    if (rest()[at] == '\\' && ++at == rest().size()) break;
    text += rest()[at];
  }
  throw FormulaFailure(Status::textNotClosed, offset_, rest().size());
}

Token FormulaLexer::takeNumber() {
  double number = 0;
  const std::string_view text = rest();
  const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  Token token = take(TokenKind::number, static_cast<std::size_t>(stop - text.data()));
  if (error != std::errc())
    throw FormulaFailure(Status::unexpectedText, token.offset, token.spelling.size());
  token.number = number;
  return token;
}

Token FormulaLexer::next() {
  offset_ = std::min(formula_.find_first_not_of(" \t\r\n", offset_), formula_.size());
  const std::string_view text = rest();
  if (text.empty()) return take(TokenKind::end, 0);
  if (text.front() == '"') return takeText();
  if (beginsNumber(text)) return takeNumber();
  if (beginsName(text.front())) return take(TokenKind::name, nameLength(text));
  if (text.front() == '@') return take(TokenKind::function, 1 + nameLength(text.substr(1)));
  if (text.starts_with("!=")) return take(TokenKind::mark, 2);
  constexpr std::string_view marks = "=!&|()";
  if (marks.find(text.front()) != std::string_view::npos) return take(TokenKind::mark, 1);
  throw FormulaFailure(Status::unexpectedText, offset_, 1);
}

}  // namespace standin
