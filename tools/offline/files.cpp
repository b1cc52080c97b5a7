#include "offline/files.h"

#include <cerrno>
#include <iterator>
#include <system_error>

#include "offline/messages.h"

namespace offline {
namespace {

[[noreturn]] void fail(const char* what, const std::filesystem::path& file, int error) {
  throw std::filesystem::filesystem_error(what, file, {error, std::generic_category()});
}

}  // namespace

std::ifstream openToRead(const std::filesystem::path& file) {
  // A pipe would wait for a writer, and a folder opens like a file.
  const auto type = std::filesystem::status(file).type();
  if (type == std::filesystem::file_type::not_found) fail("cannot read", file, ENOENT);
  if (type != std::filesystem::file_type::regular) throw Failed(file.string() + ": is not a file");
  std::ifstream input(file, std::ios::binary);
  if (!input) fail("cannot read", file, errno);
  return input;
}

std::string contentOf(const std::filesystem::path& file) {
  std::ifstream input = openToRead(file);
  std::string content(std::istreambuf_iterator<char>(input), {});
  if (input.bad()) fail("cannot read", file, EIO);
  return content;
}

void writeNewFile(const std::filesystem::path& file, std::string_view content) {
  if (std::filesystem::exists(file)) fail("is there already", file, EEXIST);
  std::ofstream output(file, std::ios::binary);
  output << content;
  output.close();
  if (!output) fail("cannot write", file, errno);
}

}  // namespace offline
