// A small tagged value: nothing, an integer, a floating-point number or a text.
//
// Threads: may share an object that none of them changes.
#pragma once

#include <cstdint>
#include <string>
#include <variant>

#include "replay/exception.h"

namespace replay {

/// A value and its kind. Copies hold texts of their own.
class variant {
 public:
  /// A conversion that the value does not allow.
  class generic : public exception {
   public:
    /// Takes what message() gives.
    explicit generic(const std::string& message) : exception(message) { append_name("variant"); }
  };

  variant() = default;                                              ///< Nothing.
  explicit variant(std::int32_t value) : value_(value) {}           ///< An integer.
  explicit variant(float value) : value_(value) {}                  ///< A number with a fraction.
  explicit variant(const std::string& value) : value_(value) {}     ///< A narrow text.
  explicit variant(const std::u16string& value) : value_(value) {}  ///< A wide text.

  /// The value as an integer: 0 for nothing, a number truncated toward zero, a text by the decimal
  /// number that it begins with, 0 if it begins with none. What 32 bits cannot hold becomes the
  /// nearest value that they can; a number that is none becomes 0.
  std::int32_t as_integer() const;

 private:
  std::variant<std::monostate, std::int32_t, float, std::string, std::u16string> value_;
};

}  // namespace replay
