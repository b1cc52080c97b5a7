// The folders of src/ are layers: a file includes from its own folder and from those below it. The
// stand-in shares with the program one header only.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <regex>

namespace {

const std::vector<std::string> layers = {"driver", "directory", "documents", "configuration",
                                         "notes",  "base",      "replay",    "platform"};

std::ptrdiff_t layerOf(const std::string& path) {
  return std::find(layers.begin(), layers.end(), path.substr(0, path.find('/'))) - layers.begin();
}

// Calls `check` with each quoted include of the sources below `folder`, whose path is given from
// there.
template <typename Check>
int forEachInclude(const std::filesystem::path& folder, Check check) {
  const std::regex include("^\\s*#\\s*include \"([^\"]+)\"");
  int count = 0;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
    std::ifstream file(entry.path());
    std::smatch match;
    for (std::string line; entry.is_regular_file() && std::getline(file, line);) {
      if (!std::regex_search(line, match, include)) continue;
      check(entry.path().lexically_relative(folder).generic_string(), match[1].str());
      ++count;
    }
  }
  return count;
}

TEST(IncludeOrder, ArrowsPointDownOnly) {
  const int count = forEachInclude(SOURCE_FOLDER "/src", [](const auto& file, const auto& header) {
    EXPECT_NE(static_cast<std::size_t>(layerOf(header)), layers.size())
        << file << " includes " << header << " without its folder";
    EXPECT_LE(layerOf(file), layerOf(header)) << file << " includes " << header;
  });
  EXPECT_GT(count, 50) << "the sources were not found";
}

TEST(IncludeOrder, StandInSharesOneHeader) {
  const int count =
      forEachInclude(SOURCE_FOLDER "/standin", [](const auto& file, const auto& header) {
        const bool isShared = static_cast<std::size_t>(layerOf(header)) != layers.size();
        EXPECT_TRUE(!isShared || header == "notes/abi.h") << file << " includes " << header;
      });
  EXPECT_GT(count, 10) << "the sources were not found";
}

}  // namespace
