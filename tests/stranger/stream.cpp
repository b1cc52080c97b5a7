// A stream of one's own, where what is written comes back without a socket; and an encrypted one to
// where nobody listens.
#include <iostream>

#include "replay/internet/address.h"
#include "replay/internet/environment.h"
#include "replay/internet/ssl.h"
#include "replay/internet/transport.h"

namespace {

using namespace replay::internet;

class loop : public transport::tcp::base {
 public:
  void flush() override {
    read_queue().append(write_queue().view());
    write_queue().clear();
  }
  void fill() override { throw connection_closed("nothing was written"); }
};

}  // namespace

int main() {
  loop stream;
  std::string line;
  stream.write_line("there", false);
  stream.write("and back\n.");
  for (int count = 0; count < 2; ++count) {
    stream.read_line(line);
    std::cout << line << ' ';
  }
  try {
    stream.read_some(line);
    stream.read_some(line);
  } catch (const replay::exception& error) {
    std::cout << error.message() << ' ';
  }
  try {
    const environment started;
    transport::tcp::ssl(address::ip4("127.0.0.1", 1), "localhost");
  } catch (const replay::exception& error) {
    std::cout << error.name() << '\n';
  }
}
