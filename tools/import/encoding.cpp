#include "import/encoding.h"

#include "import/failure.h"
#include "store/letters.h"

namespace dxl {

void Encoding::begin(std::string_view bytes) {
  if (bytes.starts_with("\xEF\xBB\xBF")) mark_ = Mark::utf8;
  if (bytes.starts_with("\xFF\xFE")) mark_ = Mark::utf16Little;
  if (bytes.starts_with("\xFE\xFF")) mark_ = Mark::utf16Big;
  if (mark_ == Mark::none && bytes.substr(0, 2).find('\0') != std::string_view::npos)
    throw Flaw("UTF-16 without a byte order mark");
}

void Encoding::declare(std::string_view name) const {
  const auto is = [name](std::string_view known) { return store::equalNames(name, known); };
  if (!is("UTF-8") && !is("UTF-16") && !is("ISO-8859-1") && !is("US-ASCII"))
    throw Flaw("the encoding " + std::string(name) + " is not read");
  const bool isAsMarked = isWide()              ? is("UTF-16")
                          : mark_ == Mark::utf8 ? is("UTF-8")
                                                : !is("UTF-16");
  if (!isAsMarked)
    throw Flaw("the byte order mark, or its absence, contradicts the encoding " +
               std::string(name));
}

std::size_t Encoding::validPart(std::string_view piece) {
  if (!isWide()) return piece.size();
  for (std::size_t at = 0; at + 1 < piece.size(); at += 2) {
    const unsigned kind = unitAt(piece, at) & 0xFC00U;
    if ((kind == 0xDC00) != isHalf_) return at;
    isHalf_ = kind == 0xD800;
  }
  return piece.size();
}

std::string Encoding::narrowed(std::string_view piece) const {
  std::string text;
  text.reserve(piece.size() / 2);
  for (std::size_t at = 0; at + 1 < piece.size(); at += 2) {
    const unsigned unit = unitAt(piece, at);
    text += unit < 0x80 ? static_cast<char>(unit) : '?';
  }
  return text;
}

unsigned Encoding::unitAt(std::string_view piece, std::size_t at) const {
  const auto first = static_cast<unsigned char>(piece[at]);
  const auto second = static_cast<unsigned char>(piece[at + 1]);
  return mark_ == Mark::utf16Little ? second * 256U + first : first * 256U + second;
}

}  // namespace dxl
