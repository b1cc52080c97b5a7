// Sends a file to a web server over an encrypted stream, for which one certificate alone is good.
//
//   upload localhost 8443 certificate.der reply.xml

#include <fstream>
#include <iostream>
#include <iterator>

#include "replay/internet/address.h"
#include "replay/internet/environment.h"
#include "replay/internet/ssl.h"
#include "replay/text.h"
#include "replay/variant.h"

using namespace replay::internet;

std::string content_of(const std::string& name) {
  std::ifstream file(name, std::ios::binary);
  std::string content(std::istreambuf_iterator<char>(file), {});
  if (content.empty()) throw replay::exception(name + " is empty or cannot be read");
  return content;
}

int main(int count, char** arguments) {
  if (count != 5) {
    std::cerr << "usage: upload HOST PORT CERTIFICATE FILE\n";
    return 2;
  }
  const std::string host = arguments[1];
  const auto port = static_cast<std::uint16_t>(replay::variant(arguments[2]).as_integer());
  try {
    const std::string body = content_of(arguments[4]);
    const environment started;
    transport::tcp::ssl stream(address::ip4(host, port), host,
                               {.certificate = content_of(arguments[3])});
    stream.write_line("PUT /upload HTTP/1.1\r\nHost: " + host, false);
    stream.write_line("Content-Length: " + std::to_string(body.size()) + "\r\n", false);
    stream.write(body);
    std::string status;
    stream.read_line(status);
    std::cout << status << '\n';
    return replay::starts_with(status, "HTTP/1.1 2") ? 0 : 1;
  } catch (const transport::tcp::ssl::security& error) {
    std::cerr << "no trusted certificate, or no TLS 1.2: " << error.message() << '\n';
  } catch (const replay::exception& error) {
    std::cerr << error.what() << '\n';
  }
  return 1;
}
