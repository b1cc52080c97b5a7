// A Notes library that hands every call on to the stand-in, which the environment's STANDIN names,
// but for those that its plan makes fail.
//
// It lies in the program directory, which is the current one, and works with files beside it:
//   ../plan    what is to fail: the number of a call, from 0, or the name of an operation; without
//              that file nothing fails
//   ../record  a line for each call, written by NotesTerm: the operation, its text (a path, a
//              profile, a formula or an item), its handle, the handle that it gave, "1" if it
//              succeeded, "0" if it did not or "failed" if it was made to fail, and the size of the
//              report before it (only if nothing is to fail), with tabs between them
#include <dlfcn.h>
#include <sched.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <type_traits>
#include <vector>

#include "support/notes_recorder.h"

namespace {

namespace fs = std::filesystem;

struct Session {
  std::string plan;
  std::vector<std::string> record;

  Session() { std::getline(std::ifstream("../plan"), plan); }

  static Session& instance() {
    static Session session;
    return session;
  }

  void write() const {
    std::ofstream out("../record");
    for (const std::string& line : record) out << line << '\n';
  }
};

std::uintmax_t reportSize() {
  std::error_code none;
  for (const auto& file : fs::directory_iterator("../data/Quellbright", none)) {
    if (file.path().filename().string().starts_with("Quellbright-DIAGNOSTIC-"))
      return file.file_size();
  }
  return 0;
}

// Without a data directory the program writes at the root of the file system. That becomes the
// folder of the world, in which the way to itself leads back to the root: what has a full path is
// still found, and nothing lands elsewhere.
void enterOwnRoot() {
  const fs::path world = fs::current_path().parent_path();
  const fs::path same = world / world.relative_path();
  fs::create_directories(same.parent_path());
  if (!fs::exists(fs::symlink_status(same))) fs::create_symlink("/", same);
  if (::geteuid() != 0 && ::unshare(CLONE_NEWUSER) != 0) std::abort();
  if (::chroot(world.c_str()) != 0) std::abort();
}

// The stand-in as a table of functions.
const notes::NotesApi& standIn() {
  static const notes::NotesApi api = [] {
    void* const library = dlopen(std::getenv("STANDIN"), RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) std::abort();
    notes::NotesApi found{};
#define FIND(result, name, arguments) \
  found.name = reinterpret_cast<decltype(found.name)>(dlsym(library, #name));
    NOTES_OPERATIONS(FIND)
#undef FIND
    return found;
  }();
  return api;
}

template <typename Wanted, typename Argument>
void takeFirst(Wanted& found, Argument argument) {
  if constexpr (std::is_same_v<Argument, Wanted>) {
    if (found == Wanted{}) found = argument;
  }
}

// The first argument of a type that says anything; nothing if there is none.
template <typename Wanted, typename... Arguments>
Wanted firstOf(Arguments... arguments) {
  Wanted found{};
  (takeFirst(found, arguments), ...);
  return found;
}

// Values with tabs between them.
template <typename First, typename... Others>
std::string joined(const First& first, const Others&... others) {
  std::ostringstream text;
  text << first;
  ((text << '\t' << others), ...);
  return text.str();
}

// The library is given the process's own arguments and may change them.
void forgetThird(int count, char** values) {
  if (count > 2) *values[2] = '\0';
}

template <auto Member, auto Name>
struct Forwarded;

template <typename Result, typename... Arguments,
          Result (NOTES_CALL* notes::NotesApi::*Member)(Arguments...), auto Name>
struct Forwarded<Member, Name> {
  static Result NOTES_CALL call(Arguments... arguments) {
    const auto [operation, type] = Name();
    const char* const text = firstOf<const char*>(arguments...);
    Session& session = Session::instance();
    // A search makes calls of its own before it ends.
    const std::size_t number = session.record.size();
    const bool fails = session.plan == operation || session.plan == std::to_string(number);
    const std::uintmax_t size = session.plan.empty() ? reportSize() : 0;
    session.record.push_back(
        joined(operation, text == nullptr ? "" : text, firstOf<DWORD>(arguments...)));
    if constexpr (std::is_void_v<Result>) {
      // There is no way to fail.
      (standIn().*Member)(arguments...);
      session.record[number] += joined("", 0, 1, size);
      if (operation == std::string("NotesTerm")) session.write();
    } else {
      if (fails && operation == std::string("OSGetDataDirectory")) enterOwnRoot();
      const Result result =
          fails ? test::failedResult<Result>(operation, type) : (standIn().*Member)(arguments...);
      if constexpr (std::is_invocable_v<decltype(forgetThird), Arguments...>)
        forgetThird(arguments...);
      const bool succeeded = (result == Result{}) == (type == std::string("STATUS"));
      const DWORD* const given = firstOf<DWORD*>(arguments...);
      session.record[number] += joined("", given == nullptr ? 0 : *given,
                                       fails       ? "failed"
                                       : succeeded ? "1"
                                                   : "0",
                                       size);
      return result;
    }
  }
};

}  // namespace

// The exports. A definition would have to name the arguments, which the list does not give; an
// indirect function needs only where it leads.
#define EXPORT(result, name, arguments)                                                         \
  extern "C" result(*find##name()) arguments {                                                  \
    return Forwarded<&notes::NotesApi::name,                                                    \
                     [] { return std::pair<const char*, const char*>(#name, #result); }>::call; \
  }                                                                                             \
  extern "C" __attribute__((visibility("default"), ifunc("find" #name)))                        \
  result NOTES_CALL name arguments;
NOTES_OPERATIONS(EXPORT)
