// Small things about texts that the files of this program share.
#pragma once

#include <algorithm>
#include <string_view>

namespace offline {

inline constexpr std::string_view programName = "qbdiagnostics-offline";

/// Line ends among them, which a line of notes.ini cannot hold.
inline bool isControl(char letter) {
  return static_cast<unsigned char>(letter) < 0x20 || letter == '\x7F';
}

inline bool hasControl(std::string_view text) { return std::ranges::any_of(text, isControl); }

}  // namespace offline
