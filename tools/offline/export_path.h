// Where an export says that its database lies.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace offline {

/// The attribute "path" of an export's root element, of whatever name; nothing if it has none.
/// Reads no further than that element. Throws Failed, which names file and line, for what is no XML
/// up to there, for a DOCTYPE with declarations of its own, and for a tag or comment above 16 MiB.
std::optional<std::string> pathOfExport(const std::filesystem::path& file);

}  // namespace offline
