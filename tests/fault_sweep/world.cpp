#include "fault_sweep/world.h"

#include <algorithm>
#include <map>
#include <sstream>

#include "support/process.h"

namespace test {
namespace {

namespace fs = std::filesystem;

const std::map<std::string, std::string>& databases() {
  static const std::map<std::string, std::string> contents = {
      {"QBConf.nsf",
       R"({"database":{"title":"Configuration","replica":"00000000000000C0"}}
{"note":1,"profile":"qbcustomerprofile","items":{"customer_organization":"Acme","customer_contact":"Kai","customer_email":"kai@acme.example","customer_language":"de","db_replica_id":"00000000000000D0","product_path":"quellbright","product_version":"2.4"}}
{"note":2,"profile":"qbserverprofile","user":"mail","items":{"server_name":"mail","domino_version":"8.5","scanning_engine_version":"5.0","vrx_version":"2.4"}}
{"note":3,"profile":"qblanguage","items":{"vrxqbevent":["user_sync=Abgleich","nab_import=Import"]}}
{"note":4,"profile":"qbdefaultprofile","items":{"FilterSetting":"1"}}
{"note":5,"items":{"Form":"qbProfile","REPLICAID":"00000000000000A1","FilterSetting":"1"}}
{"note":6,"items":{"Form":"QBPROFILE","REPLICAID":"00000000000000A2","FilterSetting":"0"}}
{"note":7,"items":{"Form":"qbConfiguration","ConfigurationName":"Works","ActiveConfiguration":"Yes","SpamProbabilityThreshold":"3","SpamHandling":"D","Languages":["German","2057"],"LanguageFilterHandling":"M","install_updates_day":["2","4"],"install_updates_time":{"time":"2012-01-01T02:30:00Z"},"wanted_updates":"1","LogLevel":"3"}}
{"note":8,"items":{"Form":"qbsenderfilter","original_input":"a@b.example","filter_email_or_domain":1,"filter_black_or_white":1,"filter_email":"a@b.example"}}
{"note":9,"items":{"Form":"qbsenderfilter","original_input":"c.example","filter_email_or_domain":2,"filter_black_or_white":2,"filter_domain":"c.example"}}
{"note":10,"items":{"Form":"qbsenderfilter","original_input":"nothing"}}
{"note":11,"items":{"Form":"qbsenderfilter","original_input":"d.example","filter_email_or_domain":"2"}}
{"note":12,"items":{"Form":"qbinstallationupdatenote","install_item":"Engine","update_version":"5.0","installed_on_server":"mail","installed_date":{"time":"2012-03-14T05:30:12Z"}}}
{"note":13,"items":{"Form":"qbinstallationupdatenote","install_item":"Add-on","update_version":"2.4","installed_on_server":"mail"}}
{"note":14,"items":{"Form":"qbEvent","reported":{"time":"2012-06-01T22:00:41Z"},"category_text":"Import","event":"Import finished."}}
{"note":15,"items":{"Form":"qbEvent","category_text":4,"event":"Category of the wrong type."}}
)"},
      {"names.nsf",
       R"({"database":{"title":"Directory","replica":"00000000000000D0"}}
{"note":1,"items":{"Type":"Person","MailServer":"mail","MailFile":"mail\\ada","FullName":["CN=Ada/O=Acme","Ada"]}}
{"note":2,"items":{"Type":"Person","MailServer":"mail","MailFile":"mail\\missing.nsf","FullName":"Bo"}}
{"note":3,"items":{"Type":"Person","FullName":"Without mail"}}
{"note":4,"items":{"Type":"Person","MailServer":1}}
{"note":5,"items":{"Type":"Database","MailServer":"mail","MailFile":"mail\\orders.nsf"}}
)"},
      {"partners.nsf",
       R"({"database":{"title":"Partners","replica":"00000000000000D1"}}
{"note":1,"items":{"Type":"Person","MailServer":"mail","MailFile":"mail\\cy.nsf","FullName":"Cy"}}
)"},
      {"mail/ada.nsf", R"({"database":{"title":"Ada","replica":"00000000000000A1"}})"},
      {"mail/orders.nsf", R"({"database":{"title":"Orders","replica":"00000000000000A2"}})"},
      {"mail/cy.nsf", R"({"database":{"title":"Cy","replica":"00000000000000A3"}})"}};
  return contents;
}

// A failed call for the data directory moves both logs to the root of the file system, as the
// console and the report tell.
void removeStray(const std::string& text) {
  for (std::size_t at = 0; (at = text.find(" \\Quellbright-", at)) != std::string::npos; ++at) {
    const std::string name = text.substr(at + 2, text.find(".log", at) + 4 - (at + 2));
    fs::remove("/" + name);
  }
}

// The report, from where the console says that it is.
std::string readReport(const std::string& console) {
  constexpr std::string_view label = "Output from diagnostic is written to: ";
  const std::size_t begin = console.find(label);
  if (begin == std::string::npos) return "";
  std::string path = console.substr(begin + label.size());
  path.resize(path.find('\n'));
  std::replace(path.begin(), path.end(), '\\', '/');
  return contentOf(path);
}

}  // namespace

World::World() {
  const fs::path program = folder_.path() / "program";
  fs::create_directories(program);
  fs::create_directories(folder_.path() / "data" / "mail");
  fs::copy(LIBRARY, program / "nnotes.dll");
  writeFile(program / "qbse.dll", "");
  writeFile(program / "notes.ini", "NotesProgram=" + folder_.text() +
                                       "/program\nDirectory=" + folder_.text() +
                                       "/data\nFaultRecovery_Build=8.5\nServerName=mail\n"
                                       "Names=names,partners\nvrx_use_names_nsf=0\n"
                                       "ServerTasks=Router,nqbschd\nEXTMGR_ADDINS=qbsmtp.dll\n"
                                       "NSF_HOOKS=qbrouter\n");
}

void World::layOut() const {
  fs::remove_all(folder_.path() / "data" / "Quellbright");
  fs::remove(folder_.path() / "record");
  for (const auto& [name, content] : databases()) {
    writeFile(folder_.path() / "data" / name, content);
  }
}

FinishedRun World::run(const std::string& plan) const {
  layOut();
  writeFile(folder_.path() / "plan", plan);
  const ProcessResult result =
      runProcess({PROGRAM, folder_.text() + "/program"}, folder_.text() + "/console");
  FinishedRun run{result.status, result.output, readReport(result.output), {}, {}};
  readRecord(run);
  removeStray(run.console);
  removeStray(run.report);
  return run;
}

void World::readRecord(FinishedRun& run) const {
  std::istringstream record(contentOf(folder_.path() / "record"));
  for (std::string line; std::getline(record, line);) {
    std::vector<std::string> parts;
    std::istringstream text(line);
    for (std::string part; std::getline(text, part, '\t');) parts.push_back(part);
    parts.resize(5);
    if (parts[0] == "call") {
      run.calls.push_back({std::stoul(parts[1]), parts[2] == "1", parts[3], parts[4]});
    } else {
      run.open.push_back({parts[0], parts[1], parts[2]});
    }
  }
}

bool World::isUnchanged() const {
  return std::all_of(databases().begin(), databases().end(), [this](const auto& database) {
    const std::string now = contentOf(folder_.path() / "data" / database.first);
    return database.first == "QBConf.nsf" ? now.starts_with(database.second)
                                          : now == database.second;
  });
}

}  // namespace test
