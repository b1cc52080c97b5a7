// The root of failures whose texts are wide, for applications to derive from.
//
// Threads: one object, one thread at a time, as its texts are made when asked for.
#pragma once

#include <string>
#include <string_view>

#include "replay/exception.h"

namespace replay {

/// A failure with a wide message. Its narrow texts are conversions of the wide ones to the system's
/// default code page, made when a narrow text is first asked for, which raises std::bad_alloc where
/// there is no memory for them; what() ends the process instead.
class exception_w : public exception {
 public:
  /// Takes what message_w() gives.
  explicit exception_w(const std::u16string& message) : exception(""), message_w_(message) {}

  /// As exception does it, of the conversions.
  const char* what() const noexcept override;
  const char* message() const override;
  const char* name() const override;

  /// The wide name, and the wide message in square brackets behind it; zero-terminated and valid
  /// until the next call.
  virtual const char16_t* what_w() const;
  /// The text given to the constructor; zero-terminated and valid as long as the object lives.
  virtual const char16_t* message_w() const;
  /// The dotted name of the class; zero-terminated and valid as long as the object lives.
  virtual const char16_t* name_w() const;

 protected:
  /// Called once by the constructor of each derived class, from the root down.
  void append_name_w(std::u16string_view word);

 private:
  void narrow() const;

  mutable std::u16string composed_w_;
  std::u16string message_w_;
  std::u16string name_w_;
  mutable bool narrowed_ = false;
};

}  // namespace replay
