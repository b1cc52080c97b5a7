// Downloads a resource into a file, shows how far it is, and stops at 100 MB.
//
//   python3 -m http.server --bind 127.0.0.1 8080 &
//   example_download http://127.0.0.1:8080/reply.xml copy.xml

#include <fstream>
#include <iostream>

#include "replay/internet/environment.h"
#include "replay/internet/http.h"

namespace {

class Progress : public replay::internet::http::monitor_type {
 public:
  bool on_status(std::int32_t status) override {
    std::cerr << "status " << status << '\n';
    return true;
  }
  bool on_response_body(const std::string& /*body*/, std::uint32_t length, std::uint32_t /*piece*/,
                        std::int32_t total) override {
    std::cerr << '\r' << length << " of " << total << " bytes";
    return length < 100'000'000;
  }
};

}  // namespace

int main(int count, char** arguments) {
  if (count != 3) {
    std::cerr << "usage: example_download <address> <file>\n";
    return 2;
  }
  using namespace replay::internet;
  try {
    const environment started;
    Progress progress;
    const http::response reply = http::get(http::request(arguments[1]), progress);
    std::cerr << '\n';
    std::ofstream(arguments[2], std::ios::binary) << reply.body;
    return reply.status == 200 ? 0 : 1;
  } catch (const replay::exception& error) {
    std::cerr << '\n' << error.what() << '\n';
    return 1;
  }
}
