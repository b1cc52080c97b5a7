// The data that conversion without Windows needs: what Windows makes of the two Western pages, and
// which character set of iconv stands for which other page.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace platform {

/// Consecutive units that become consecutive bytes, `first` as `byte`.
struct UnitRange {
  char16_t first;
  char16_t last;
  std::uint8_t byte;
};

/// A page of one byte for each character. All but the bytes 80 to 9F are the unit of the same
/// value.
struct SingleBytePage {
  std::array<char16_t, 32> controls;   ///< What the bytes 80 to 9F stand for.
  std::span<const UnitRange> encoded;  ///< In ascending order, for the units that lie elsewhere.
};

extern const SingleBytePage windows1252;
extern const SingleBytePage latin1;

struct IconvPage {
  std::uint32_t page;
  std::size_t characterSize;  ///< Bytes that iconv takes for one unit at most, with all shifts.
  const char* name;
};

/// The row of `page`, or null if iconv has nothing for it.
const IconvPage* findIconvPage(std::uint32_t page);

}  // namespace platform
