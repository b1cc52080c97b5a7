// An open file, read and written in full, whose failures name it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace dxl {

class Descriptor {
 public:
  /// Opens a file for reading. Throws ImportFailure, as all other functions do.
  static Descriptor openToRead(const std::string& path);

  /// Owns `opened`, which is called `path` in failures.
  Descriptor(int opened, std::string path);
  Descriptor(const Descriptor&) = delete;
  Descriptor(Descriptor&& other) noexcept;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor();

  const std::string& path() const { return path_; }

  int number() const { return opened_; }

  /// The size in bytes; 0 if it is not a plain file.
  std::uint64_t size() const;

  /// Fills the buffer, as far as the file goes, and gives the number of bytes read.
  std::size_t read(char* buffer, std::size_t size);

  /// Fills the buffer from a position; what lies behind the end of the file is no failure.
  std::size_t readAt(std::uint64_t position, char* buffer, std::size_t size) const;

  void write(std::string_view bytes);
  void writeAt(std::uint64_t position, std::string_view bytes);
  void sync();

 private:
  int opened_;
  std::string path_;
};

}  // namespace dxl
