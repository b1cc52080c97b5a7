// Writes HTML: what the program says is markup, what a report says is text, and never the other
// way.
#pragma once

#include <cstddef>
#include <cstdint>
#include <ostream>
#include <string_view>

namespace reader {

/// A literal of the program. A value cannot become one.
class Markup {
 public:
  template <std::size_t size>
  consteval Markup(const char (&literal)[size]) : text_(literal, size - 1) {}  // NOLINT: on purpose

  std::string_view text() const { return text_; }

 private:
  std::string_view text_;
};

class Html {
 public:
  explicit Html(std::ostream& out) : out_(out) {}

  Html& operator<<(Markup markup) {
    out_ << markup.text();
    return *this;
  }

  Html& number(std::uint64_t number) {
    out_ << number;
    return *this;
  }

  /// A number, and the word for one or for several.
  Html& count(std::uint64_t number, Markup one, Markup several) {
    out_ << number << ' ';
    return *this << (number == 1 ? one : several);
  }

  /// The bytes of a report as `shown` has them; what turns the direction of text, or is no
  /// character, as \u and its number.
  Html& text(std::string_view bytes) {
    write(bytes, false);
    return *this;
  }

  /// The same, but tabs stay.
  Html& line(std::string_view bytes) {
    write(bytes, true);
    return *this;
  }

 private:
  void write(std::string_view bytes, bool keepsTabs);

  std::ostream& out_;
};

}  // namespace reader
