#include "replay/exception_w.h"

#include "replay/unicode.h"

namespace replay {

const char* exception_w::what() const noexcept {
  narrow();
  return exception::what();
}

const char* exception_w::message() const {
  narrow();
  return exception::message();
}

const char* exception_w::name() const {
  narrow();
  return exception::name();
}

const char16_t* exception_w::what_w() const {
  composed_w_ = name_w_ + u"[" + message_w_ + u"]";
  return composed_w_.c_str();
}

const char16_t* exception_w::message_w() const { return message_w_.c_str(); }

const char16_t* exception_w::name_w() const { return name_w_.c_str(); }

void exception_w::append_name_w(std::u16string_view word) {
  if (!name_w_.empty()) name_w_ += u'.';
  name_w_ += word;
}

void exception_w::narrow() const {
  if (narrowed_) return;
  set_texts(unicode::to_narrow(name_w_, 0, false), unicode::to_narrow(message_w_, 0, false));
  narrowed_ = true;
}

}  // namespace replay
