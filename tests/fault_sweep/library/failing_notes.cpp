// A Notes library that hands every call on to the stand-in, but for those that its plan makes fail.
//
// It lies in the program directory, which is the current one, and works with files beside it:
//   ../plan    what is to fail: the number of a call, from 0, or the name of an operation; without
//              that file nothing fails
//   ../record  what happened, written by NotesTerm: a line for each call, as "call" or "failed",
//   the
//              size of the report in that moment (only if nothing is to fail), the operation and
//              what it was about, with tabs between them; then what the ledger says
#include <dlfcn.h>
#include <sched.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <type_traits>
#include <vector>

#include "fault_sweep/library/ledger.h"
#include "support/notes_recorder.h"

namespace {

namespace fs = std::filesystem;

struct Call {
  std::uintmax_t reportSize;
  std::string operation;
  std::string subject;
};

struct Session {
  std::string plan;
  std::vector<Call> calls;
  test::Ledger ledger;

  Session() { std::getline(std::ifstream("../plan"), plan); }

  static Session& instance() {
    static Session session;
    return session;
  }

  /// Notes a call and gives its number.
  std::size_t note(const std::string& operation, const std::string& subject) {
    calls.push_back({plan.empty() ? reportSize() : 0, operation, subject});
    return calls.size() - 1;
  }

  bool fails(std::size_t number) const {
    return plan == calls[number].operation || plan == std::to_string(number);
  }

  void write() const {
    std::ofstream out("../record");
    for (std::size_t number = 0; number < calls.size(); ++number) {
      const auto& [size, operation, subject] = calls[number];
      out << (fails(number) ? "failed\t" : "call\t") << size << '\t' << operation << '\t' << subject
          << '\n';
    }
    ledger.write(out);
  }

 private:
  static std::uintmax_t reportSize() {
    std::error_code none;
    for (const auto& file : fs::directory_iterator("../data/Quellbright", none)) {
      if (file.path().filename().string().starts_with("Quellbright-DIAGNOSTIC-"))
        return file.file_size();
    }
    return 0;
  }
};

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
    void* const library = dlopen(STANDIN, RTLD_NOW | RTLD_LOCAL);
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

// What a call is about: its first text, be it a path, a profile, a formula or an item; without one,
// what it closes.
std::string subjectOf(const std::string& operation, const char* text, DWORD handle) {
  if (text != nullptr) return text;
  return Session::instance().ledger.labelOf(test::Ledger::closedKind(operation), handle);
}

// Keeps the ledger after a call.
void keep(const std::string& operation, const std::string& subject, DWORD handle,
          const DWORD* result, bool succeeded) {
  test::Ledger& ledger = Session::instance().ledger;
  const std::string closed = test::Ledger::closedKind(operation);
  const std::string opened = test::Ledger::openedKind(operation);
  if (!closed.empty()) ledger.close(closed, handle, succeeded);
  if (opened.empty() || !succeeded) return;
  // A lock is on the block that is passed.
  const DWORD thing = result != nullptr ? *result : handle;
  if (thing != 0) ledger.open(opened, thing, subject);
}

template <auto Member, auto Name>
struct Forwarded;

template <typename Result, typename... Arguments,
          Result (NOTES_CALL* notes::NotesApi::*Member)(Arguments...), auto Name>
struct Forwarded<Member, Name> {
  static Result NOTES_CALL call(Arguments... arguments) {
    const auto [operation, type] = Name();
    const auto handle = firstOf<DWORD>(arguments...);
    const std::string subject = subjectOf(operation, firstOf<const char*>(arguments...), handle);
    const std::size_t number = Session::instance().note(operation, subject);
    if constexpr (std::is_void_v<Result>) {
      // There is no way to fail.
      (standIn().*Member)(arguments...);
      if (operation == std::string("NotesTerm")) Session::instance().write();
    } else {
      const bool fails = Session::instance().fails(number);
      if (fails && operation == std::string("OSGetDataDirectory")) enterOwnRoot();
      const Result result =
          fails ? test::failedResult<Result>(operation, type) : (standIn().*Member)(arguments...);
      const bool succeeded = (result == Result{}) == (type == std::string("STATUS"));
      keep(operation, subject, handle, firstOf<DWORD*>(arguments...), succeeded);
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
