#include "import/json_text.h"

#include <nlohmann/json.hpp>
#include <utility>

namespace dxl {

std::string jsonText(std::string text) { return nlohmann::json(std::move(text)).dump(); }

std::string jsonNumber(double number) { return nlohmann::json(number).dump(); }

}  // namespace dxl
