// The words of a formula, one after the other.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace standin {

enum class TokenKind { end, name, function, text, number, mark };

struct Token {
  TokenKind kind = TokenKind::end;
  std::size_t offset = 0;     // in bytes from the beginning of the formula
  std::string_view spelling;  // as it stands there
  std::string text;           // what a text constant stands for
  double number = 0;          // what a number stands for
};

class FormulaLexer {
 public:
  explicit FormulaLexer(std::string_view formula) : formula_(formula) {}

  /// The next word; kind `end` from the end on. Throws FormulaFailure for what is no word.
  Token next();

 private:
  Token take(TokenKind kind, std::size_t length);
  Token takeText();
  Token takeNumber();

  std::string_view rest() const { return formula_.substr(offset_); }

  std::string_view formula_;
  std::size_t offset_ = 0;
};

}  // namespace standin
