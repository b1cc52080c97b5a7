#include "platform/posix/code_pages/iconv_pages.h"

#include <iconv.h>

#include <algorithm>
#include <bit>
#include <cerrno>

#include "platform/posix/code_pages/page_data.h"

namespace platform {
namespace {

constexpr const char* wideName =
    std::endian::native == std::endian::little ? "UTF-16LE" : "UTF-16BE";

// The signature of iconv wants text that it could write to; it only reads there.
char* writable(const char* text) {
  return const_cast<char*>(text);  // NOLINT(cppcoreguidelines-pro-type-const-cast)
}

// What iconv_open gives where it fails; a pointer by its type.
iconv_t notOpen() {
  return reinterpret_cast<iconv_t>(-1);  // NOLINT(performance-no-int-to-ptr)
}

// One conversion from start to end: what is left to read and the room that is left.
class Converter {
 public:
  Converter(const char* to, const char* from, std::span<const char> text, std::span<char> buffer)
      : handle_(iconv_open(to, from)),
        in_(writable(text.data())),
        inLeft_(text.size()),
        out_(buffer.data()),
        outLeft_(buffer.size()) {}
  Converter(const Converter&) = delete;
  Converter& operator=(const Converter&) = delete;
  ~Converter() {
    if (isOpen()) iconv_close(handle_);
  }

  bool isOpen() const { return handle_ != notOpen(); }
  std::size_t outLeft() const { return outLeft_; }

  /// Converts up to the end or the first obstacle; 0 or the errno that names it.
  int run() { return step(&in_, &inLeft_); }

  /// Writes what iconv holds back and returns to the initial shift state.
  int flush() { return step(nullptr, nullptr); }

  /// Converts `text` where the input stands.
  int insertConverted(std::span<const char> text) {
    char* in = writable(text.data());
    std::size_t left = text.size();
    return step(&in, &left);
  }

  /// Writes `bytes` as they are.
  int insert(std::span<const char> bytes) {
    if (bytes.size() > outLeft_) return E2BIG;
    out_ = std::ranges::copy(bytes, out_).out;
    outLeft_ -= bytes.size();
    return 0;
  }

  void skip(std::size_t count) {
    count = std::min(count, inLeft_);
    in_ += count;
    inLeft_ -= count;
  }

 private:
  int step(char** in, std::size_t* left) {
    const std::size_t result = iconv(handle_, in, left, &out_, &outLeft_);
    return result == static_cast<std::size_t>(-1) ? errno : 0;
  }

  iconv_t handle_;
  char* in_;
  std::size_t inLeft_;
  char* out_;
  std::size_t outLeft_;
};

template <typename Unit>
std::span<const char> bytesOf(std::basic_string_view<Unit> text) {
  return {reinterpret_cast<const char*>(text.data()), text.size() * sizeof(Unit)};
}

std::span<char> bytesOf(std::span<char16_t> buffer) {
  return {reinterpret_cast<char*>(buffer.data()), buffer.size_bytes()};
}

}  // namespace

std::size_t iconvCharacterSize(std::uint32_t page) {
  const IconvPage* row = findIconvPage(page);
  // A slim system has the row but not the module.
  return row != nullptr && Converter(row->name, wideName, {}, {}).isOpen() ? row->characterSize : 0;
}

Conversion wideToIconv(std::uint32_t page, std::u16string_view text, std::span<char> buffer,
                       bool& usedDefault) {
  using namespace std::string_view_literals;
  const IconvPage* row = findIconvPage(page);
  if (row == nullptr) return {0, errorInvalidParameter};
  Converter converter(row->name, wideName, bytesOf(text), buffer);
  if (!converter.isOpen()) return {0, errorInvalidParameter};
  int obstacle = converter.run();
  while (obstacle == EILSEQ || obstacle == EINVAL) {
    usedDefault = true;
    converter.skip(sizeof(char16_t));
    obstacle = converter.insertConverted(bytesOf(u"?"sv));
    if (obstacle == 0) obstacle = converter.run();
  }
  if (obstacle == 0) obstacle = converter.flush();
  if (obstacle != 0) return {0, errorInsufficientBuffer};
  return {buffer.size() - converter.outLeft(), 0};
}

Conversion iconvToWide(std::uint32_t page, bool strict, std::string_view text,
                       std::span<char16_t> buffer) {
  using namespace std::string_view_literals;
  const IconvPage* row = findIconvPage(page);
  if (row == nullptr) return {0, errorInvalidParameter};
  Converter converter(wideName, row->name, bytesOf(text), bytesOf(buffer));
  if (!converter.isOpen()) return {0, errorInvalidParameter};
  int obstacle = converter.run();
  while (obstacle == EILSEQ || obstacle == EINVAL) {
    if (strict) return {0, errorNoUnicodeTranslation};
    converter.skip(obstacle == EINVAL ? text.size() : 1);
    obstacle = converter.insert(bytesOf(u"\uFFFD"sv));
    if (obstacle == 0) obstacle = converter.run();
  }
  if (obstacle == 0) obstacle = converter.flush();
  if (obstacle != 0) return {0, errorInsufficientBuffer};
  return {buffer.size() - converter.outLeft() / sizeof(char16_t), 0};
}

}  // namespace platform
