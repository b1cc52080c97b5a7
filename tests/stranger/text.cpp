// All that the library has without a network; run in the folder of its source.
#include <iostream>

#include "replay/directory_listing.h"
#include "replay/exception_w.h"
#include "replay/md5.h"
#include "replay/text.h"
#include "replay/unicode.h"
#include "replay/variant.h"

namespace {

class refusal : public replay::exception_w {
 public:
  explicit refusal(const std::u16string& message) : exception_w(message) {
    append_name_w(u"refusal");
  }
};

}  // namespace

int main() {
  namespace unicode = replay::unicode;
  try {
    throw refusal(unicode::to_wide("17 caf\xE9s", unicode::codepage_of_name("windows-1252")));
  } catch (const refusal& error) {
    const std::u16string message = error.message_w();
    std::cout << error.name() << ' ' << unicode::to_narrow(message, unicode::utf8, true) << ' '
              << replay::variant(message).as_integer() << ' ';
  }
  for (const std::string& name : replay::list_directory("./", "text.*", false, true, false)) {
    std::cout << replay::md5_hex(replay::lowered(name)) << '\n';
  }
}
