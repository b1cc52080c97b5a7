// Replies of a web server: the first byte of the input is the size of the pieces in which the rest
// arrives. However a reply is split, it gives the same response or the same failure.

#include "check.h"
#include "connection.h"
#include "replay/internet/environment.h"
#include "replay/internet/http.h"

namespace {

using namespace replay::internet;

std::string outcomeOf(std::string_view reply, std::size_t pieceSize) {
  static const environment started;
  static const http::request request("127.0.0.1");
  const Connection connection(reply, pieceSize);
  try {
    const http::response response = http::get(request);
    std::string text = std::to_string(response.status);
    for (const auto& [name, value] : response.headers) text.append("\n" + name + "=" + value);
    return text + "\n" + response.body;
  } catch (const http::generic& failure) {
    return failure.what();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::string_view reply = asText(data, size).substr(1);
  check(outcomeOf(reply, data[0]) == outcomeOf(reply, 0));
  return 0;
}
