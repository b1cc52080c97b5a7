// A failure with a wide text, told in UTF-8.

#include <iostream>

#include "replay/exception_w.h"
#include "replay/unicode.h"

class no_such_user : public replay::exception_w {
 public:
  explicit no_such_user(const std::u16string& name) : exception_w(name) {
    append_name_w(u"no_such_user");
  }
};

int main() {
  namespace unicode = replay::unicode;
  try {
    throw no_such_user(u"J\u00f6rg Petersen");
  } catch (const replay::exception_w& error) {
    std::cout << unicode::to_narrow(error.what_w(), unicode::utf8, true) << '\n';
  }
}
