#include "standin/formula.h"

#include <algorithm>
#include <string>

#include "standin/status.h"
#include "store/letters.h"

namespace standin {
namespace {

bool isDigit(char c) { return c >= '0' && c <= '9'; }

bool isOfName(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || isDigit(c) || c == '_' || c == '$';
}

// Takes a formula apart from its front, without the blanks between its words.
class Words {
 public:
  explicit Words(std::string_view formula) : rest_(formula) { skipBlanks(); }

  bool accept(char mark) {
    if (!rest_.starts_with(mark)) return false;
    take(1);
    return true;
  }

  void expect(char mark) {
    if (!accept(mark)) fail();
  }

  // `word` has no regard to case; a function begins with "@".
  bool accept(std::string_view word) {
    const bool isThere = store::equalNames(nextWord(), word);
    if (isThere) take(word.size());
    return isThere;
  }

  std::string_view name() {
    const std::string_view name = nextWord();
    const bool isOne = !name.empty() && name.front() != '@' && !isDigit(name.front()) &&
                       !store::equalNames(name, "SELECT");
    if (!isOne) fail();
    return take(name.size());
  }

  std::string text() {
    if (!rest_.starts_with('"')) fail();
    std::string text;
    for (std::size_t at = 1; at < rest_.size(); ++at) {
      if (rest_[at] == '"') {
        take(at + 1);
        return store::undoubled(text);
      }
      if (rest_[at] == '\\' && ++at == rest_.size()) break;
      text += rest_[at];
    }
    throw Failure(Status::textNotClosed);
  }

  void expectEnd() const {
    if (!rest_.empty()) fail();
  }

 private:
  [[noreturn]] void fail() const {
    throw Failure(rest_.empty() ? Status::formulaEnds : Status::unexpectedText);
  }

  // A name, or a function with its "@"; empty if neither comes next.
  std::string_view nextWord() const {
    const std::size_t mark = rest_.starts_with('@') ? 1 : 0;
    const auto* const end = std::find_if_not(rest_.begin() + mark, rest_.end(), isOfName);
    return rest_.substr(0, static_cast<std::size_t>(end - rest_.begin()));
  }

  std::string_view take(std::size_t length) {
    const std::string_view taken = rest_.substr(0, length);
    rest_.remove_prefix(length);
    skipBlanks();
    return taken;
  }

  void skipBlanks() {
    rest_.remove_prefix(std::min(rest_.find_first_not_of(" \t\r\n"), rest_.size()));
  }

  std::string_view rest_;
};

void readCondition(Words& words, Formula& formula) {
  if (words.accept("@All")) return;
  const bool lowers = words.accept("@LowerCase");
  if (lowers) words.expect('(');
  const std::string_view item = words.name();
  if (lowers) words.expect(')');
  words.expect('=');
  formula.push_back({store::lowered(item), lowers, words.text()});
}

}  // namespace

Formula compileFormula(std::string_view text) {
  Words words(text);
  if (!words.accept("SELECT")) throw Failure(Status::noSelect);
  Formula formula;
  do readCondition(words, formula);
  while (words.accept('&'));
  words.expectEnd();
  return formula;
}

}  // namespace standin
