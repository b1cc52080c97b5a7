// The root of all failures of the library.
//
// An object says what it is by a dotted name that follows the inheritance of its class: each
// constructor of the chain appends its own word. Everything in the library fails by throwing a
// class of this tree by value, so that a caller catches a whole family through any base.
//
// Threads: one object, one thread at a time, as what() changes it; separate objects at once.
#pragma once

#include <exception>
#include <string>
#include <string_view>

/// The support library. What is in `internet` needs a library of its own.
namespace replay {

/// Any failure of the library.
class exception : public std::exception {
 public:
  /// Takes what message() gives.
  explicit exception(const std::string& message) : message_(message) {}

  /// The name, and the message in square brackets behind it. Valid until the next call. Where there
  /// is no memory for it the process ends, as the language allows this one no failure.
  const char* what() const noexcept override;
  /// The text given to the constructor; valid as long as the object lives.
  virtual const char* message() const;
  /// The dotted name of the class; valid as long as the object lives.
  virtual const char* name() const;

 protected:
  /// Called once by the constructor of each class of the tree, from the root down, with the word
  /// that goes behind the name so far and a dot.
  void append_name(std::string_view word);

  /// For exception_w, which derives its narrow texts from its wide ones only when asked.
  void set_texts(std::string name, std::string message) const;

 private:
  mutable std::string composed_;  // what() gives a pointer that outlives the call
  mutable std::string message_;
  mutable std::string name_;
};

}  // namespace replay
