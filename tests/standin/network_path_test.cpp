#include <gtest/gtest.h>

#include "server.h"

namespace standin_tests {
namespace {

using Parts = std::vector<std::string>;  // port, server, file

// Outputs that a failed call left alone show as "?".
Parts parse(const std::string& path) {
  char port[NOTES_PATH_SIZE] = "?";
  char server[NOTES_PATH_SIZE] = "?";
  char file[NOTES_PATH_SIZE] = "?";
  const STATUS status = library().OSPathNetParse(path.c_str(), port, server, file);
  EXPECT_EQ(status != 0, file == std::string("?")) << wordsOf(status);
  return {port, server, file};
}

std::string compose(const char* port, const char* server, const std::string& file) {
  char path[NOTES_PATH_SIZE] = "?";
  const STATUS status = library().OSPathNetConstruct(port, server, file.c_str(), path);
  EXPECT_EQ(status != 0, path == std::string("?")) << wordsOf(status);
  return path;
}

TEST(NetworkPath, PartsGoInAndComeOut) {
  const struct {
    const char *port, *server, *file, *path;
  } rows[] = {
      {"", "", "names.nsf", "names.nsf"},
      {"", "Mail/Acme", "names.nsf", "Mail/Acme!!names.nsf"},
      {"TCPIP", "Mail", "a\\b.nsf", "TCPIP!!!Mail!!a\\b.nsf"},
      {"TCPIP", "", "names.nsf", "TCPIP!!!names.nsf"},
      {"", "", "one!mark.nsf", "one!mark.nsf"},
      {"", "Mail", "late!!!mark", "Mail!!late!!!mark"},
      {"", "", "", ""},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(compose(row.port, row.server, row.file), row.path);
    EXPECT_EQ(parse(row.path), (Parts{row.port, row.server, row.file})) << row.path;
  }
  EXPECT_EQ(compose(nullptr, nullptr, "names.nsf"), "names.nsf");
}

TEST(NetworkPath, LengthsCountTheClosingZero) {
  const Parts refused{"?", "?", "?"};
  const std::string longest(255, 'x');
  EXPECT_EQ(compose(nullptr, nullptr, longest), longest);
  EXPECT_EQ(compose(nullptr, nullptr, longest + "x"), "?");
  EXPECT_EQ(compose(nullptr, "s", longest.substr(2)), "?");
  EXPECT_EQ(parse(longest + "!!!" + longest + "!!" + longest), (Parts{longest, longest, longest}));
  EXPECT_EQ(parse(longest + "x!!!s!!f"), refused);
  EXPECT_EQ(parse("p!!!" + longest + "x!!f"), refused);
  EXPECT_EQ(parse("p!!!s!!x" + longest), refused);
}

TEST(NetworkPath, MissingArgumentsAreRefused) {
  char path[] = "names.nsf";
  EXPECT_NE(library().OSPathNetConstruct(nullptr, nullptr, nullptr, path), 0);
  EXPECT_NE(library().OSPathNetParse(path, path, path, nullptr), 0);
  EXPECT_STREQ(path, "names.nsf");
}

}  // namespace
}  // namespace standin_tests
