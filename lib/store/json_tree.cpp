#include "store/json_tree.h"

#include <nlohmann/json.hpp>

namespace store {

// The parser takes a zero byte for the end of its text.
bool TreeMaker::read(std::string_view line) {
  return line.find('\0') == std::string_view::npos && nlohmann::json::sax_parse(line, this);
}

}  // namespace store
