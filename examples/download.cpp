// Downloads a resource into a file, shows how far it is, and stops at 100 MB.
//
//   download http://127.0.0.1:8080/reply.xml copy.xml

#include <fstream>
#include <iostream>

#include "replay/internet/environment.h"
#include "replay/internet/http.h"
#include "replay/internet/http_request.h"

using namespace replay::internet;

class progress : public http::monitor_type {
 public:
  bool on_response_body(const std::string& /*body*/, std::uint32_t length, std::uint32_t /*piece*/,
                        std::int32_t total) override {
    std::cerr << '\r' << length << " of " << total << " bytes";
    return length < 100'000'000;
  }
};

int main(int count, char** arguments) {
  if (count != 3) {
    std::cerr << "usage: download ADDRESS FILE\n";
    return 2;
  }
  try {
    const environment started;
    progress shown;
    const http::response reply = http::get(http::request(arguments[1]), shown);
    if (reply.status != 200) throw replay::exception("status " + std::to_string(reply.status));
    std::ofstream file(arguments[2], std::ios::binary);
    file << reply.body << std::flush;
    if (!file) throw replay::exception("the file could not be written");
    return 0;
  } catch (const replay::exception& error) {
    std::cerr << '\n' << error.what() << '\n';
    return 1;
  }
}
