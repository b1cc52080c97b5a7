// Prints a value out of the XML document that a web server answers.
//
//   echo '<reply><version>5.0.218</version></reply>' >reply.xml
//   python3 -m http.server --bind 127.0.0.1 8080 &
//   example_web_value http://127.0.0.1:8080/reply.xml reply.version

#include <iostream>

#include "replay/exception.h"
#include "replay/internet/web_request.h"
#include "replay/unicode.h"

int main(int count, char** arguments) {
  if (count != 3) {
    std::cerr << "usage: example_web_value <address> <path of the value>\n";
    return 2;
  }
  using replay::internet::WebRequest;
  namespace unicode = replay::unicode;
  WebRequest request;
  request.base_url = arguments[1];
  request.parameters["product"] = "domino module";
  try {
    request.execute();
    std::cout << request.value(arguments[2]) << '\n';
    return 0;
  } catch (const WebRequest::WebRequestError& error) {
    std::cerr << unicode::to_narrow(error.message(), unicode::utf8, false) << '\n';
  } catch (const replay::exception& error) {
    std::cerr << error.what() << '\n';
  }
  return 1;
}
