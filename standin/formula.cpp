#include "standin/formula.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "standin/formula_lexer.h"
#include "standin/formula_values.h"
#include "store/letters.h"

namespace standin {
namespace {

using Value = FormulaValue;
using Condition = Formula;

// A part of the formula as far as it is compiled, and where it stands.
struct Part {
  std::variant<Value, Condition> meaning;
  std::size_t offset;
  std::size_t end;
};

constexpr int deepestNesting = 100;  // each level costs stack, in compiling and in calling

// Goes down by the rank of the operators, one operation for each.
class Compiler {
 public:
  explicit Compiler(std::string_view formula) : lexer_(formula), token_(lexer_.next()) {}

  Formula compile() {
    if (token_.kind != TokenKind::name || !store::equalNames(token_.spelling, "SELECT"))
      fail(Status::noSelect);
    advance();
    Condition condition = asCondition(alternatives());
    if (token_.kind != TokenKind::end) fail(Status::unexpectedText);
    return condition;
  }

 private:
  [[noreturn]] void fail(Status status) const {
    throw FormulaFailure(status, token_.offset, token_.spelling.size());
  }

  void advance() {
    end_ = token_.offset + token_.spelling.size();
    token_ = lexer_.next();
  }

  bool isMark(std::string_view mark) const {
    return token_.kind == TokenKind::mark && token_.spelling == mark;
  }

  bool accept(std::string_view mark) {
    const bool isThere = isMark(mark);
    if (isThere) advance();
    return isThere;
  }

  void expect(std::string_view mark) {
    if (!accept(mark)) failAtToken();
  }

  [[noreturn]] void failAtToken() const {
    fail(token_.kind == TokenKind::end ? Status::formulaEnds : Status::unexpectedText);
  }

  template <typename Wanted>
  static Wanted meaningOf(Part part, Status failure) {
    auto* meaning = std::get_if<Wanted>(&part.meaning);
    if (meaning == nullptr) throw FormulaFailure(failure, part.offset, part.end - part.offset);
    return std::move(*meaning);
  }

  static Condition asCondition(Part part) {
    return meaningOf<Condition>(std::move(part), Status::conditionExpected);
  }

  static Value asValue(Part part) {
    return meaningOf<Value>(std::move(part), Status::valueExpected);
  }

  // One operand, or several with the mark between them; `decisive` is the truth of an operand that
  // settles the whole.
  template <typename Operand>
  Part chain(std::string_view mark, bool decisive, Operand operand) {
    Part first = operand();
    if (!isMark(mark)) return first;
    const std::size_t offset = first.offset;
    std::vector<Condition> conditions{asCondition(std::move(first))};
    while (accept(mark)) conditions.push_back(asCondition(operand()));
    Condition all;
    if (!decisive)  // what is true for one of them is true for the whole
      for (Condition& one : conditions)
        std::ranges::move(one.conditions, std::back_inserter(all.conditions));
    all.selects = [conditions = std::move(conditions), decisive](const store::Note& note) {
      const bool isSettled =
          std::any_of(conditions.begin(), conditions.end(),
                      [&](const Condition& one) { return one.selects(note) == decisive; });
      return isSettled ? decisive : !decisive;
    };
    return {std::move(all), offset, end_};
  }

  Part alternatives() {
    return chain("|", true, [this] { return requirements(); });
  }

  Part requirements() {
    return chain("&", false, [this] { return comparison(); });
  }

  Part comparison() {
    Part left = operand();
    while (isMark("=") || isMark("!=")) {
      const bool wanted = token_.spelling == "=";
      advance();
      const std::size_t offset = left.offset;
      Value one = asValue(std::move(left));
      Value other = asValue(operand());
      Condition compared;
      if (auto condition = textCondition(one, other); wanted && condition.has_value())
        compared.conditions.push_back(*std::move(condition));
      compared.selects = [wanted, one = std::move(one),
                          other = std::move(other)](const store::Note& note) {
        return haveOneInCommon(one, other, note) == wanted;
      };
      left = {std::move(compared), offset, end_};
    }
    return left;
  }

  Part operand() {
    if (nesting_ == deepestNesting) fail(Status::formulaTooDeep);
    ++nesting_;
    const std::size_t offset = token_.offset;
    Part part = isMark("!") || isMark("(") ? group() : word();
    --nesting_;
    return {std::move(part.meaning), offset, end_};
  }

  Part group() {
    const std::size_t offset = token_.offset;
    if (accept("!")) {
      auto negated = [inner = asCondition(operand())](const store::Note& note) {
        return !inner.selects(note);
      };
      return {Condition{std::move(negated), {}}, offset, end_};
    }
    expect("(");
    Part part = alternatives();
    expect(")");
    return part;
  }

  Part word() {
    const Token token = token_;
    switch (token.kind) {
      case TokenKind::function:
        return function();
      case TokenKind::text:
        advance();
        return {Value{token.text}, token.offset, end_};
      case TokenKind::number:
        advance();
        return {Value{token.number}, token.offset, end_};
      case TokenKind::name:
        if (store::equalNames(token.spelling, "SELECT")) fail(Status::unexpectedText);
        advance();
        return {Value{Field{std::string(token.spelling)}}, token.offset, end_};
      default:
        failAtToken();
    }
  }

  Part function() {
    const std::size_t offset = token_.offset;
    const std::string name = store::lowered(token_.spelling);
    const bool isFolding = name == "@lowercase" || name == "@uppercase";
    if (!isFolding && name != "@all") fail(Status::unknownFunction);
    advance();
    if (!isFolding) return {Condition{[](const store::Note&) { return true; }, {}}, offset, end_};
    expect("(");
    Value argument = asValue(alternatives());
    expect(")");
    argument.letters = name == "@lowercase" ? store::LetterCase::lower : store::LetterCase::upper;
    return {std::move(argument), offset, end_};
  }

  FormulaLexer lexer_;
  Token token_;
  std::size_t end_ = 0;  // of the word before the token
  int nesting_ = 0;
};

}  // namespace

Formula compileFormula(std::string_view text) { return Compiler(text).compile(); }

}  // namespace standin
