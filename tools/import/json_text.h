// Texts as a store's lines have them.
#pragma once

#include <string>

namespace dxl {

/// A text of valid UTF-8 as a JSON string.
std::string jsonText(std::string text);

/// A finite number in JSON, exact.
std::string jsonNumber(double number);

}  // namespace dxl
