// Values of documents: the first line of the input is the path, the rest the document.

#include "check.h"
#include "replay/internet/web_request.h"
#include "slow_text.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view input = asText(data, size);
  const std::string_view path = input.substr(0, input.find('\n'));
  const std::string_view document = input.substr(path.size());
  check(outcome(replay::internet::WebRequest::scan_value, document, path) ==
        outcome(scanWithLoweredCopies, document, path));
  return 0;
}
