#include "offline/export_path.h"

#include <expat.h>

#include <memory>
#include <string_view>

#include "offline/files.h"
#include "offline/messages.h"

namespace offline {
namespace {

constexpr int pieceSize = 64 * 1024;
constexpr XML_Index longestToken = 16L * 1024 * 1024;

struct Root {
  XML_Parser parser = nullptr;
  bool isFound = false;
  bool hasDeclarations = false;
  std::optional<std::string> path = std::nullopt;
};

void XMLCALL onElement(void* data, const XML_Char*, const XML_Char** attributes) {
  auto& root = *static_cast<Root*>(data);
  root.isFound = true;
  for (; *attributes != nullptr; attributes += 2) {
    if (std::string_view(attributes[0]) == "path") root.path = attributes[1];
  }
  XML_StopParser(root.parser, XML_FALSE);
}

// An entity that is declared here could stand for anything.
void XMLCALL onDoctype(void* data, const XML_Char*, const XML_Char*, const XML_Char*,
                       int hasDeclarations) {
  auto& root = *static_cast<Root*>(data);
  root.hasDeclarations = hasDeclarations != 0;
  if (root.hasDeclarations) XML_StopParser(root.parser, XML_FALSE);
}

[[noreturn]] void fail(const std::filesystem::path& file, XML_Parser parser, const char* why) {
  throw Failed(file.string() + ":" + std::to_string(XML_GetCurrentLineNumber(parser)) + ": " + why);
}

}  // namespace

std::optional<std::string> pathOfExport(const std::filesystem::path& file) {
  const std::unique_ptr<XML_ParserStruct, decltype(&XML_ParserFree)> owned(
      XML_ParserCreate(nullptr), XML_ParserFree);
  XML_ParserStruct* const parser = owned.get();
  Root root{parser};
  XML_SetUserData(parser, &root);
  XML_SetStartElementHandler(parser, onElement);
  XML_SetStartDoctypeDeclHandler(parser, onDoctype);

  std::ifstream input = openToRead(file);
  XML_Index given = 0;
  while (!root.isFound) {
    void* const piece = XML_GetBuffer(parser, pieceSize);
    if (piece == nullptr) throw std::bad_alloc();
    const int count = readPiece(input, file, static_cast<char*>(piece), pieceSize);
    given += count;
    const XML_Status status = XML_ParseBuffer(parser, count, count < pieceSize ? 1 : 0);
    if (root.hasDeclarations) fail(file, parser, "the DOCTYPE has declarations of its own");
    if (status == XML_STATUS_ERROR && !root.isFound)
      fail(file, parser, XML_ErrorString(XML_GetErrorCode(parser)));
    if (given - XML_GetCurrentByteIndex(parser) > longestToken)
      fail(file, parser, "a tag or comment is larger than 16 MiB");
  }
  return root.path;
}

}  // namespace offline
