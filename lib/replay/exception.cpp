#include "replay/exception.h"

#include <utility>

namespace replay {

const char* exception::what() const noexcept {
  composed_ = name_ + "[" + message_ + "]";
  return composed_.c_str();
}

const char* exception::message() const { return message_.c_str(); }

const char* exception::name() const { return name_.c_str(); }

void exception::append_name(std::string_view word) {
  if (!name_.empty()) name_ += '.';
  name_ += word;
}

void exception::set_texts(std::string name, std::string message) const {
  name_ = std::move(name);
  message_ = std::move(message);
}

}  // namespace replay
