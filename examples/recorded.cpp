// Reads a recorded reply of a web server as if it came over a connection: a stream of one's own.
//
//   (printf 'HTTP/1.1 200 OK\r\n\r\n'; cat reply.xml) >reply.http
//   recorded reply.http reply.version

#include <fstream>
#include <iostream>

#include "replay/internet/byte_queue.h"
#include "replay/internet/transport.h"
#include "replay/internet/xml_value.h"

using namespace replay::internet;

class recorded : public transport::tcp::base {
 public:
  explicit recorded(const char* name) : file_(name, std::ios::binary) {}
  void flush() override { write_queue().clear(); }
  void fill() override {
    byte_queue& queue = read_queue();
    file_.read(queue.prepare(8192).data(), 8192);
    if (file_.gcount() == 0) throw connection_closed("the recording ends");
    queue.commit(static_cast<std::size_t>(file_.gcount()));
  }

 private:
  std::ifstream file_;
};

int main(int count, char** arguments) {
  if (count != 3) {
    std::cerr << "usage: recorded FILE PATH\n";
    return 2;
  }
  recorded stream(arguments[1]);
  std::string line = "the status";
  std::string body;
  std::string value;
  try {
    while (!line.empty()) stream.read_line(line);
    for (;;) stream.append(std::string::npos, body);
  } catch (const recorded::connection_closed& error) {
    if (scan_value(body, arguments[2], value)) {
      std::cout << value << '\n';
      return 0;
    }
    std::cerr << "no such value before " << error.message() << '\n';
    return 1;
  }
}
