// Asks a web server with a named value, and prints a value out of the XML document that it answers.
//
//   web_value http://127.0.0.1:8080/reply.xml reply.version

#include <iostream>
#include <stdexcept>

#include "replay/exception.h"
#include "replay/internet/web_request.h"
#include "replay/unicode.h"

int main(int count, char** arguments) {
  using replay::internet::WebRequest;
  namespace unicode = replay::unicode;
  if (count != 3) {
    std::cerr << "usage: web_value ADDRESS PATH\n";
    return 2;
  }
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
  } catch (const std::out_of_range&) {
    std::cerr << "the reply ends within the value\n";
  }
  return 1;
}
