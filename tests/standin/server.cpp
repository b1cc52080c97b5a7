#include "server.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "platform/files.h"
#include "platform/library.h"

namespace standin_tests {
namespace {

template <typename Function>
void find(void* loaded, const char* name, Function& function) {
  function = reinterpret_cast<Function>(platform::findFunction(loaded, name));
  if (function == nullptr) throw std::runtime_error(std::string("no operation ") + name);
}

LibraryTable load() {
  const std::filesystem::path before = std::filesystem::current_path();
  platform::changeDirectory(BINARY_FOLDER "/standin");
  void* const loaded = platform::loadLibrary("nnotes.dll");
  std::filesystem::current_path(before);
  if (loaded == nullptr) throw std::runtime_error("the library does not load");
  LibraryTable table{};
#define FIND_OPERATION(result, name, arguments) find(loaded, #name, table.name);
  NOTES_OPERATIONS(FIND_OPERATION)
#undef FIND_OPERATION
  return table;
}

}  // namespace

const LibraryTable& library() {
  static const LibraryTable table = load();
  return table;
}

std::string wordsOf(STATUS status) {
  char words[NOTES_ERROR_TEXT_SIZE] = {};
  const WORD length = library().OSLoadString(nullptr, status, words, sizeof words);
  EXPECT_EQ(length, std::string(words).size());
  return words;
}

std::string initialise(std::vector<std::string> arguments) {
  arguments.insert(arguments.begin(), "program");
  std::vector<char*> pointers;
  pointers.reserve(arguments.size());
  for (std::string& argument : arguments) pointers.push_back(argument.data());
  return wordsOf(library().NotesInitExtended(static_cast<int>(pointers.size()), pointers.data()));
}

Server::Server(const std::string& settings) {
  library();  // before the folder changes: the path of the build may lack a drive
  before_ = std::filesystem::current_path();
  std::filesystem::current_path(folder_.path());
  test::writeFile("notes.ini", settings);
}

Server::~Server() {
  library().NotesTerm();
  std::filesystem::current_path(before_);
}

RunningServer::RunningServer(const std::string& settings) : Server("Directory=/data\n" + settings) {
  EXPECT_EQ(initialise(), "No error");
}

}  // namespace standin_tests
