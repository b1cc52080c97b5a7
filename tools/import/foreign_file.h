// Files that are taken for exports and are something else.
#pragma once

#include <string_view>

namespace dxl {

/// Looks at the first bytes of a file. Throws Flaw, with words that say what it is and what to ask
/// for, if it is empty, an archive, a database of Domino, a store, a page of HTML or no XML.
void requireXml(std::string_view beginning);

}  // namespace dxl
