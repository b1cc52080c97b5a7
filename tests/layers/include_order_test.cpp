// The folders of src/ are layers: a file includes from its own folder and from those below it. The
// stand-in shares with the program one header only, the programs beside it what every process does
// first, and the reader of reports the lowest layer.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <regex>

#include "support/folders.h"

namespace {

const std::vector<std::string> layers = {"driver", "directory", "documents", "configuration",
                                         "notes",  "base",      "replay",    "platform"};
const std::ptrdiff_t noLayer = std::ssize(layers);

std::ptrdiff_t layerOf(const std::string& path) {
  return std::ranges::find(layers, path.substr(0, path.find('/'))) - layers.begin();
}

TEST(IncludeOrder, ArrowsPointDownOnlyAndOtherProgramsShareWhatTheyMay) {
  const std::regex include("^\\s*#\\s*include \"([^\"]+)\"");
  for (const std::string name : {"src", "standin", "reader"}) {
    const std::string folder = test::inRepository(name);
    int count = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
      const std::string path = entry.path().lexically_relative(folder).generic_string();
      const bool isProgram = name == "src";
      std::ifstream file(entry.path());
      std::smatch match;
      for (std::string line; entry.is_regular_file() && std::getline(file, line);) {
        if (!std::regex_search(line, match, include)) continue;
        const std::ptrdiff_t layer = layerOf(match[1]);
        const bool isBelow = layer != noLayer && layerOf(path) <= layer;
        const bool isProcessOfMain =
            path.ends_with("/main.cpp") && match[1] == "platform/process.h";
        const bool isShared = name == "reader" ? layerOf("platform") == layer
                                               : match[1] == "notes/abi.h" || isProcessOfMain;
        const bool isOwn = layer == noLayer || isShared;
        EXPECT_TRUE(isProgram ? isBelow : isOwn) << path << " includes " << match[1];
        ++count;
      }
    }
    EXPECT_GT(count, 10) << "the sources were not found";
  }
}

}  // namespace
