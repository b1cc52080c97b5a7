// What a fuzzer states of each result.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

/// Ends the process where a statement does not hold, so that the fuzzer keeps the input.
inline void check(bool holds) {
  if (!holds) std::abort();
}

inline std::string_view asText(const std::uint8_t* data, std::size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}
