// Prints a value out of the XML document at an address. Nothing is caught: a failure aborts it.
//
//   first_value http://127.0.0.1:8080/reply.xml

#include <iostream>

#include "replay/internet/web_request.h"

int main(int count, char** arguments) {
  replay::internet::WebRequest request;
  request.base_url = count > 1 ? arguments[1] : "http://127.0.0.1:8080/reply.xml";
  request.execute();
  std::cout << request.value("reply.version") << '\n';
}
