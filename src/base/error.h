// The form of the program's failures.
//
// Each class of the program that can fail has a nested error class that derives from Error and adds
// nothing but its name. A layer catches the classes of the layer below it and raises its own with a
// prefix of its own, so that a line of the report is a chain of prefixes that ends in the words of
// the Notes library. Nobody catches Error itself: a failure that no layer expects ends the process.
#pragma once

#include <exception>
#include <string>
#include <utility>

namespace base {

class Error : public std::exception {
 public:
  explicit Error(std::u16string message) : message_(std::move(message)) {}

  /// All that a failure tells: a wide text, without the name of its class.
  const std::u16string& message() const { return message_; }

 private:
  std::u16string message_;
};

}  // namespace base
