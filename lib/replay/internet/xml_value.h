// Reading one value out of a small XML document without building a tree.
//
// Threads: any number may call this at once, also on one document.
#pragma once

#include <string>
#include <string_view>

namespace replay::internet {

/// A forward scan of the text, made for documents whose form is known: it does not validate,
/// knows no depth, and takes whatever follows a "<" for a tag. Finds the elements that `path`
/// names, separated by ".", each somewhere behind the one before it, and sets `out` to the text
/// between the last one's tag and the next tag, its five predefined entities resolved. A name is
/// compared without regard to case and as a beginning: "item" takes "<itemlist>" as well. Gives
/// false, and leaves `out` alone, where the path is not found or has no names. Raises
/// std::out_of_range where nothing follows the last tag or it has no end. Takes time in
/// proportion to document and path.
bool scan_value(std::string_view document, std::string_view path, std::string& out);

}  // namespace replay::internet
