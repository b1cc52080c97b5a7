// What of a line is masked.
#pragma once

#include <cstdint>
#include <functional>
#include <string_view>

#include "report/entry_reader.h"

namespace reader {

/// Kinds of pseudonyms; `message` is text in which values may stand, and has none.
enum class MaskKind : std::uint8_t {
  organization,
  person,
  mail,
  domain,
  server,
  replicaId,
  path,
  text,
  message
};
inline constexpr std::size_t pseudonymKinds = 8;

/// Hands out the parts of a line, of a report that has started over or not, in their order; none of
/// them is empty.
void forEachMaskedPart(const Reading& reading, bool isOverwritten,
                       const std::function<void(MaskKind, std::string_view)>& take);

}  // namespace reader
