// Opening a database of the stand-in library beside nlohmann's judgement alone of the same lines.
#include <cstdlib>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

#include "notes/api.h"
#include "ratio.h"
#include "support/stand_in.h"
#include "support/temporary_folder.h"

namespace {

constexpr double mostOfJudgement = 3.0;

std::string line(int id, const std::string& items) {
  return R"({"note":)" + std::to_string(id) + R"(,"items":{)" + items + "}}\n";
}

std::string recipient(int number) {
  const std::string name = "Maja Jürgens" + std::to_string(number);
  return R"("FULLNAME":"CN=)" + name + R"(/O=Nordholm","Form":"qbProfile","Type":"Person",)" +
         R"("REPLICAID":"C12579E8)" + std::to_string(10000000 + number) + R"(","NAME":")" + name +
         R"(","Server":"CN=mail01/O=Nordholm","FilePath":"mail\\u)" + std::to_string(number) +
         R"(.nsf","Subject":")" + name + R"(","FilterSetting":"1")";
}

std::string event(int number) {
  return R"("Form":"qbEvent","reported":{"time":"2012-05-30T14:07:00.25Z"},"category":)" +
         std::to_string(number % 7) +
         R"(,"servers":["mail01","mail02"],"event":"Import finished.")";
}

template <typename Items>
std::string lines(int count, Items items) {
  std::string all;
  for (int i = 1; i <= count; ++i) all += line(i, items(i));
  return all;
}

std::string manyItems(int count) {
  std::string items = R"("Form":"qbEvent")";
  for (int i = 0; i < count; ++i)
    items += ",\"item" + std::to_string(i) + "\":" + std::to_string(i);
  return items;
}

// Stops the program: a benchmark of a failure would look fast.
void require(bool isRight) {
  if (!isRight) std::exit(2);
}

std::size_t open() {
  char program[] = "benchmark";
  char* arguments[] = {program};
  DBHANDLE db = 0;
  require(notes::NotesInitExtended(1, arguments) == 0 && notes::NSFDbOpen("a.nsf", &db) == 0);
  notes::NotesTerm();
  return db;
}

std::size_t judge(std::string_view text) {
  for (; !text.empty(); text.remove_prefix(text.find('\n') + 1))
    require(nlohmann::json::accept(text.substr(0, text.find('\n'))));
  return text.size();
}

}  // namespace

int main() {
  require(test::loadStandIn());
  const test::TemporaryFolder folder;
  std::filesystem::current_path(folder.path());
  test::writeFile("notes.ini", "Directory=.\n");
  Comparisons comparisons;
  const auto compare = [&](const std::string& what, const std::string& notes) {
    const std::string content = R"({"database":{"title":"Sample","replica":"852564F2007E1A3B"}})"
                                "\n" +
                                notes;
    test::writeFile("a.nsf", content);
    comparisons.shortEnough(what, {open}, {[&] { return judge(content); }}, mostOfJudgement);
  };
  compare("20,000 recipients", lines(20000, recipient));
  compare("20,000 events", lines(20000, event));
  compare("a note of 60,000 items", line(1, manyItems(60000)));
  std::filesystem::current_path("/");
  return comparisons.exitStatus();
}
