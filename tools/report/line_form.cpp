#include "report/line_form.h"

#include <algorithm>
#include <bit>
#include <map>
#include <string>
#include <vector>

#include "report/line_tables.h"
#include "report/lines.h"

namespace reader {
namespace {

struct Piece {
  enum class Type : std::uint8_t { literal, field, dots, flag } type = Type::literal;
  std::string text{};  // of a literal
  std::string_view key{};
  Kind kind = Kind::plain;
  std::string until{};    // what ends a field
  bool untilEnd = false;  // and with it the line
};

struct CompiledForm {
  const LineForm* form;
  std::vector<Piece> pieces;
};

Kind kindNamed(std::string_view name) {
  static const std::map<std::string_view, Kind> kinds = {{"organization", Kind::organization},
                                                         {"person", Kind::person},
                                                         {"mail", Kind::mail},
                                                         {"sender", Kind::sender},
                                                         {"server", Kind::server},
                                                         {"replica-id", Kind::replicaId},
                                                         {"path", Kind::path},
                                                         {"path-list", Kind::pathList},
                                                         {"file-path", Kind::filePath},
                                                         {"server-path", Kind::serverPath},
                                                         {"text", Kind::text},
                                                         {"event-text", Kind::eventText},
                                                         {"message", Kind::message},
                                                         {"number", Kind::number},
                                                         {"yes", Kind::yes},
                                                         {"no", Kind::no}};
  return kinds.at(name);
}

// What stands between the braces.
Piece bracedPiece(std::string_view inner) {
  if (inner == "dots") return {.type = Piece::Type::dots};
  const std::size_t sign = inner.find_first_of("=:");
  Piece piece{.type = Piece::Type::field, .key = inner.substr(0, sign)};
  if (sign == std::string_view::npos) return piece;
  const std::string_view rest = inner.substr(sign + 1);
  if (inner[sign] == '=') {
    piece.type = Piece::Type::literal;
    piece.text = rest;
  } else {
    piece.kind = kindNamed(rest);
    if (piece.kind == Kind::yes || piece.kind == Kind::no) piece.type = Piece::Type::flag;
  }
  return piece;
}

void setEndsOfFields(std::vector<Piece>& pieces) {
  for (auto field = pieces.begin(); field != pieces.end(); ++field) {
    if (field->type != Piece::Type::field) continue;
    auto next = field + 1;
    for (; next != pieces.end() && next->type == Piece::Type::literal; ++next)
      field->until += next->text;
    field->untilEnd = next == pieces.end() || next->type == Piece::Type::flag;
  }
}

CompiledForm compiled(const LineForm& form) {
  CompiledForm result{&form, {}};
  for (std::string_view rest = form.pattern; !rest.empty();) {
    const std::size_t size =
        rest.front() == '{' ? rest.find('}') + 1 : std::min(rest.find('{'), rest.size());
    const std::string_view part = rest.substr(0, size);
    result.pieces.push_back(part.front() == '{' ? bracedPiece(part.substr(1, size - 2))
                                                : Piece{.text = std::string(part)});
    rest.remove_prefix(size);
  }
  setEndsOfFields(result.pieces);
  return result;
}

// The first of the dots that end a label.
std::size_t findDots(std::string_view text, std::size_t at) {
  while ((at = text.find("...", at)) != std::string_view::npos) {
    const std::size_t end = text.find_first_not_of('.', at);
    const std::string_view behind = text.substr(std::min(end, text.size()));
    if (behind == ":" || behind.starts_with(": ")) return at;
    at = std::min(end, text.size());
  }
  return at;
}

// The size of the literal with which a text begins; blanks at the literal's end may lack where the
// text ends, because programs on the way trim lines. npos if the text is another.
std::size_t sizeOfLiteral(std::string_view text, std::string_view literal) {
  if (text.starts_with(literal)) return literal.size();
  const std::size_t least = literal.find_last_not_of(" \t") + 1;
  return text.size() >= least && literal.starts_with(text) ? text.size() : std::string_view::npos;
}

// Where a literal stands in a text, or at its end without its last blanks.
std::size_t findLiteral(std::string_view text, std::string_view literal, std::size_t at) {
  const std::size_t found = text.find(literal, at);
  if (found != std::string_view::npos) return found;
  const std::size_t least = literal.find_last_not_of(" \t") + 1;
  for (std::size_t size = literal.size(); size-- > least;) {
    if (text.substr(at).ends_with(literal.substr(0, size))) return text.size() - size;
  }
  return found;
}

// Goes along a line and collects what the pattern has keys for.
class Matcher {
 public:
  Matcher(std::string_view line, Match& match) : line_(line), match_(match) {}

  bool run(const std::vector<Piece>& pieces) {
    for (auto piece = pieces.begin(); piece != pieces.end() && !broken_; ++piece) {
      const bool beforeDots = piece + 1 != pieces.end() && (piece + 1)->type == Piece::Type::dots;
      if (!take(*piece, beforeDots)) return false;
    }
    return at_ == line_.size();
  }

 private:
  bool take(const Piece& piece, bool beforeDots) {
    switch (piece.type) {
      case Piece::Type::literal:
        return takeLiteral(piece);
      case Piece::Type::dots:
        if (!line_.substr(at_).starts_with("...")) return false;
        at_ = std::min(line_.find_first_not_of('.', at_), line_.size());
        return true;
      case Piece::Type::flag:
        add(piece, {});
        return true;
      default:
        return takeField(piece, beforeDots ? findDots(line_, at_) : endOf(piece));
    }
  }

  bool takeLiteral(const Piece& piece) {
    const std::size_t size = sizeOfLiteral(line_.substr(at_), piece.text);
    if (size == std::string_view::npos) return false;
    if (!piece.key.empty()) add(piece, line_.substr(at_, size));
    at_ += size;
    return true;
  }

  std::size_t endOf(const Piece& piece) const {
    if (!piece.untilEnd) return findLiteral(line_, piece.until, at_);
    return line_.substr(at_).ends_with(piece.until) ? line_.size() - piece.until.size()
                                                    : std::string_view::npos;
  }

  bool takeField(const Piece& piece, std::size_t end) {
    if (end == std::string_view::npos) {
      broken_ = piece.until.starts_with(')');
      if (!broken_) return false;
      end = line_.size();
    }
    const std::string_view text = line_.substr(at_, end - at_);
    constexpr std::size_t mostDigits = 18;
    if (piece.kind == Kind::number &&
        (text.empty() || text.size() > mostDigits || !std::ranges::all_of(text, isDigit)))
      return false;
    add(piece, text);
    at_ = end;
    return true;
  }

  void add(const Piece& piece, std::string_view text) {
    match_.values.at(match_.count++) = {piece.key, piece.kind, text};
  }

  std::string_view line_;
  Match& match_;
  std::size_t at_ = 0;
  bool broken_ = false;
};

// Whether a line of so many tabs and this text behind them may be of the form.
bool mayFit(const CompiledForm& candidate, std::size_t tabs, std::string_view text) {
  if (candidate.form->tabs != tabs && candidate.form->tabs != 0) return false;
  if (candidate.pieces.empty() || candidate.pieces.front().type != Piece::Type::literal)
    return true;
  return text.starts_with(candidate.pieces.front().text.front());
}

using Forms = std::vector<CompiledForm>;

// The first of the forms that fits and may stand behind `rank`.
Match matchOf(const Forms& forms, int rank, std::string_view line) {
  const std::size_t tabs = std::min(line.find_first_not_of('\t'), line.size());
  Match match;
  for (const CompiledForm& candidate : forms) {
    const bool inOrder = candidate.form->rank == 0 || candidate.form->rank > rank;
    const std::string_view text = line.substr(candidate.form->tabs == 0 ? 0 : tabs);
    if (!inOrder || !mayFit(candidate, tabs, text)) continue;
    match.count = 0;
    match.form = candidate.form;
    if (Matcher(text, match).run(candidate.pieces)) return match;
  }
  return {};
}

constexpr std::size_t places = static_cast<std::size_t>(Place::importMessages) + 1;
constexpr std::size_t sections = static_cast<std::size_t>(Section::unknown) + 1;
using FormsByPlace = std::array<std::array<Forms, places>, sections>;

const Forms& formsAt(Section section, Place place) {
  static const FormsByPlace all = [] {
    FormsByPlace forms;
    for (const LineForm& form : lineForms()) {
      for (std::uint32_t bits = form.sections; bits != 0; bits &= bits - 1) {
        const auto index = static_cast<std::size_t>(std::countr_zero(bits));
        forms.at(index).at(static_cast<std::size_t>(form.place)).push_back(compiled(form));
      }
    }
    return forms;
  }();
  return all.at(static_cast<std::size_t>(section)).at(static_cast<std::size_t>(place));
}

}  // namespace

Match matchLine(Section section, Place place, int rank, std::string_view line) {
  return matchOf(formsAt(section, place), rank, line);
}

Match matchHead(std::string_view line) {
  static const Forms heads = [] {
    Forms all;
    for (const LineForm& form : lineForms()) {
      if (form.place == Place::head) all.push_back(compiled(form));
    }
    return all;
  }();
  return matchOf(heads, 0, line);
}

Section sectionOf(const LineForm& form) {
  return static_cast<Section>(std::countr_zero(form.sections));
}

}  // namespace reader
