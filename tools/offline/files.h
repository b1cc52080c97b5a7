// Reading and writing whole files, with failures that name the file.
#pragma once

#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

namespace offline {

/// Throws std::filesystem::filesystem_error, as all here do; and Failed for what is no plain file.
std::ifstream openToRead(const std::filesystem::path& file);

std::string contentOf(const std::filesystem::path& file);

/// Writes a file that is not there yet.
void writeNewFile(const std::filesystem::path& file, std::string_view content);

}  // namespace offline
