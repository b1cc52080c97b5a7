// Conversion between UTF-16 text and narrow text in a named code page, and the names of code pages.
//
// A result is a new string, made only when the whole conversion has succeeded. What fails is a
// class of this namespace, with an empty message but for name_of_codepage(); the two directions
// read the system's error numbers differently, because only one of them has proved the page before
// it converts.
//
// Threads: any number may call the functions at once.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "replay/exception.h"

/// Text in code pages.
namespace replay::unicode {

/// A conversion that failed for a reason that no class below tells.
class generic : public exception {
 public:
  /// Takes what message() gives.
  explicit generic(const std::string& message) : exception(message) { append_name("unicode"); }
};

/// The system took the room for the result for too small.
class out_of_memory : public generic {
 public:
  /// Takes what message() gives.
  explicit out_of_memory(const std::string& message) : generic(message) {
    append_name("out_of_memory");
  }
};

/// There is no such code page here, or none of the name. The message is empty but for a page
/// without a name, whose number it has.
class invalid_codepage : public generic {
 public:
  /// Takes what message() gives.
  explicit invalid_codepage(const std::string& message) : generic(message) {
    append_name("invalid_codepage");
  }
};

/// A character that the code page lacks, or bytes that are none of the page.
class unmappable_character : public generic {
 public:
  /// Takes what message() gives.
  explicit unmappable_character(const std::string& message) : generic(message) {
    append_name("unmappable_character");
  }
};

/// A code page as Windows numbers them. 0 is the system's default page.
using codepage = std::int32_t;

/// The pseudo page of a straight copy: each unit below 256 is the byte of the same value.
inline constexpr codepage ascii = -1;

/// The page of UTF-8.
inline constexpr codepage utf8 = 65001;

/// Converts to the bytes of `page`. With `strict` a character that the page lacks raises
/// unmappable_character, without it becomes the page's default character; `ascii` raises in either
/// case, and a page that takes no checks, UTF-8 among them, replaces in either case. Raises
/// invalid_codepage, out_of_memory, unmappable_character or generic. Empty text gives empty text
/// for any page.
std::string to_narrow(std::u16string_view text, codepage page, bool strict);

/// Converts bytes of `page` to UTF-16. Malformed bytes raise unmappable_character where the page
/// takes checks and are replaced where it does not. Raises invalid_codepage, out_of_memory,
/// unmappable_character or generic; generic also for non-empty text that gives no unit at all.
std::u16string to_wide(std::string_view text, codepage page);

/// Converts text of the system's default page to UTF-8. Raises what to_wide() raises.
std::string to_utf8(std::string_view text);

/// The page of a character set's name; case and all but letters and digits do not count. Behind
/// "iso-8859-" and "windows-" a number gives a page, whether there is such a one or not. Raises
/// invalid_codepage for a name that is not known here, as "utf-16": more than half of the names
/// that name_of_codepage() gives do not lead back to their page. Names are known from main() on,
/// not yet to the constructor of an object outside of functions.
codepage codepage_of_name(std::string_view name);

/// The preferred name of a page, from main() on. Raises invalid_codepage for a page that has none.
const std::string& name_of_codepage(codepage page);

}  // namespace replay::unicode
