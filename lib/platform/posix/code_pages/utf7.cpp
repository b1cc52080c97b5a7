#include "platform/posix/code_pages/utf7.h"

#include <cstddef>
#include <cstdint>

#include "platform/posix/code_pages/bounded_output.h"

namespace platform {
namespace {

constexpr std::string_view base64 =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

bool isBetween(char16_t unit, char16_t first, char16_t last) {
  return unit >= first && unit <= last;
}

bool isDirect(char16_t unit) {
  // A zero is direct to Windows; "~" and "\", which other encoders leave as they are, are not.
  constexpr std::u16string_view others(u"'(),-./:? \t\r\n\0", 14);
  return isBetween(unit, u'A', u'Z') || isBetween(unit, u'a', u'z') ||
         isBetween(unit, u'0', u'9') || others.find(unit) != std::u16string_view::npos;
}

// The digit's value, or -1.
int base64Value(char byte) {
  if (byte >= 'A' && byte <= 'Z') return byte - 'A';
  if (byte >= 'a' && byte <= 'z') return byte - 'a' + 26;
  if (byte >= '0' && byte <= '9') return byte - '0' + 52;
  if (byte == '+') return 62;
  return byte == '/' ? 63 : -1;
}

class Encoder {
 public:
  explicit Encoder(std::span<char> buffer) : out_(buffer) {}

  void add(char16_t unit) {
    if (unit == u'+') {
      closeRun();
      out_.put('+');
      out_.put('-');
    } else if (isDirect(unit)) {
      closeRun();
      out_.put(unit);
    } else {
      addToRun(unit);
    }
  }

  Conversion finish() {
    closeRun();
    return out_.result();
  }

 private:
  void addToRun(char16_t unit) {
    if (!inRun_) out_.put('+');
    inRun_ = true;
    bits_ = bits_ << 16 | unit;
    for (bitCount_ += 16; bitCount_ >= 6;) {
      bitCount_ -= 6;
      out_.put(base64[bits_ >> bitCount_ & 0x3F]);
    }
  }

  void closeRun() {
    if (!inRun_) return;
    if (bitCount_ > 0) out_.put(base64[bits_ << (6 - bitCount_) & 0x3F]);
    out_.put('-');
    inRun_ = false;
    bitCount_ = 0;
  }

  BoundedOutput<char> out_;
  bool inRun_ = false;
  std::uint32_t bits_ = 0;
  unsigned bitCount_ = 0;
};

class Decoder {
 public:
  explicit Decoder(std::span<char16_t> buffer) : out_(buffer) {}

  void add(char byte) {
    const int value = base64Value(byte);
    if (!inRun_ && byte == '+') {
      inRun_ = runIsEmpty_ = true;
    } else if (inRun_ && value >= 0) {
      addBits(static_cast<unsigned>(value));
    } else {
      endRun(byte);
    }
  }

  Conversion finish() const { return out_.result(); }

 private:
  // "+" is a digit within a run and opens none there: "++-" is the digit 62, whose bits make no
  // unit.
  void addBits(unsigned value) {
    runIsEmpty_ = false;
    bits_ = bits_ << 6 | value;
    bitCount_ += 6;
    if (bitCount_ < 16) return;
    bitCount_ -= 16;
    out_.put(bits_ >> bitCount_);
  }

  // For a byte that is itself, which it is outside a run as well. Windows forgets the left-over
  // bits of a run when an ASCII byte ends it, but keeps them for the next run behind "+-" and
  // behind a byte above 127, so that they open that run's first unit; this does as Windows does.
  void endRun(char byte) {
    const bool closes = inRun_ && byte == '-';
    const auto unit = static_cast<unsigned char>(byte);
    if (closes && runIsEmpty_) out_.put('+');
    if (!closes) out_.put(unit);
    if (inRun_ && unit < 0x80 && !(closes && runIsEmpty_)) bitCount_ = 0;
    inRun_ = false;
  }

  BoundedOutput<char16_t> out_;
  bool inRun_ = false;
  bool runIsEmpty_ = false;
  std::uint32_t bits_ = 0;
  unsigned bitCount_ = 0;
};

}  // namespace

Conversion encodeUtf7(std::u16string_view text, std::span<char> buffer) {
  Encoder encoder(buffer);
  for (const char16_t unit : text) encoder.add(unit);
  return encoder.finish();
}

Conversion decodeUtf7(std::string_view text, std::span<char16_t> buffer) {
  Decoder decoder(buffer);
  for (const char byte : text) decoder.add(byte);
  return decoder.finish();
}

}  // namespace platform
