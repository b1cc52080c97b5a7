#include "report/line_tables.h"

#include <array>

namespace reader {
namespace {

constexpr std::uint32_t in(Section section) { return 1U << static_cast<unsigned>(section); }

constexpr std::uint32_t loading = in(Section::loadingDirectory);
constexpr std::uint32_t importing = in(Section::importing);

// An entry's first line, which tells its section.
constexpr LineForm head(Section section, std::string_view pattern, Target target = Target::title,
                        Code code = Code::none) {
  return {in(section), Place::head, 0, pattern, target, Place::body, code};
}

constexpr LineForm failure(Section section, std::string_view pattern, Code code) {
  return head(section, pattern, Target::error, code);
}

constexpr LineForm body(Section section, std::string_view pattern, Target target,
                        Code code = Code::none) {
  return {in(section), Place::body, 5, pattern, target, Place::body, code};
}

constexpr LineForm variable(std::string_view pattern) {
  return body(Section::systemEnvironment, pattern, Target::variables);
}

constexpr LineForm customer(std::string_view pattern) {
  return body(Section::customerProfile, pattern, Target::fields);
}

constexpr LineForm server(std::string_view pattern) {
  return body(Section::serverProfile, pattern, Target::fields);
}

constexpr LineForm update(std::size_t tabs, std::string_view pattern, int rank) {
  return {in(Section::installedUpdates),
          Place::body,
          tabs,
          pattern,
          Target::updates,
          Place::body,
          Code::none,
          rank};
}

// A title that moves on to the next part of what the import writes.
constexpr LineForm part(std::uint32_t sections, Place place, std::string_view pattern, Place next) {
  return {sections, place, 2, pattern, Target::title, next};
}

constexpr LineForm message(std::string_view pattern, Code code) {
  return {loading | importing, Place::messages, 2,   pattern,
          Target::messages,    Place::messages, code};
}

constexpr LineForm entryTitle(Place place) {
  return {importing, place, 2, "DIRECTORY ENTRY:", Target::entries, Place::entry};
}

constexpr LineForm entry(std::string_view pattern, int rank) {
  return {importing, Place::entry, 2, pattern, Target::entries, Place::entry, Code::none, rank};
}

constexpr LineForm result(std::string_view pattern, int rank, Place next = Place::result) {
  return {loading | importing, Place::result, 2, pattern, Target::result, next, Code::none, rank};
}

// The last line of the result, where lines before it are lost.
constexpr LineForm lastResult(Place place) {
  return {importing,      place,          2,         "Created...: {created:number}",
          Target::result, Place::created, Code::none};
}

constexpr LineForm importMessage(std::string_view pattern) {
  return {loading | importing,    Place::importMessages, 3,           pattern,
          Target::importMessages, Place::importMessages, Code::import};
}

constexpr std::array table = {
    head(Section::startingLog, "STARTING LOG"),

    head(Section::systemEnvironment, "SYSTEM ENVIRONMENT:"),
    variable("{name=ServerTasks}={value}"),
    variable("{name=EXTMGR_ADDINS}={value}"),
    variable("{name=NSF_HOOKS}={value}"),
    variable("{name=NotesProgram}={value:path}"),
    variable("{name=Directory}={value:path}"),
    variable("{name=FaultRecovery_Build}={value}"),
    variable("{name=ServerName}={value:server}"),
    variable("{name=Names}={value:path-list}"),
    variable("{name=vrx_use_names_nsf}={value}"),

    head(Section::dominoEnvironmentVariables, "DOMINO ENVIRONMENT VARIABLES:"),
    body(Section::dominoEnvironmentVariables, "{token} was not found in {variable}.{found:no}",
         Target::checks, Code::notWired),
    body(Section::dominoEnvironmentVariables, "{token} was found in {variable}.{found:yes}",
         Target::checks),

    head(Section::fileCheck, "FILE CHECK:"),
    body(Section::fileCheck, "{path:file-path} was not found.{found:no}", Target::files,
         Code::fileMissing),
    body(Section::fileCheck, "{path:file-path} was found.{found:yes}", Target::files),

    head(Section::customerProfile, "CUSTOMERPROFILE:"),
    failure(Section::customerProfile, "Could not load Customer profile: {:message}",
            Code::customer),
    customer("{label=Organization}({value:organization})"),
    customer("{label=Contact}({value:person})"),
    customer("{label=Email}({value:mail})"),
    customer("{label=Replica Id}({value:replica-id})"),
    customer("{label=Product Path}({value:path})"),
    customer("{label=Language}({value})"),

    head(Section::serverProfile, "SERVERPROFILE:"),
    failure(Section::serverProfile, "Could not load Server profile: {:message}", Code::server),
    server("{label=Server name}({value:server})"),
    server("{label=Domino version}({value})"),
    server("{label=Core version}({value})"),
    server("{label=VRX version}({value})"),

    head(Section::filteredUsers, "Number of filtered users: {count:number}", Target::itself),
    failure(Section::filteredUsers, "Could not count users: {:message}", Code::users),

    // The report tells this section by its third line.
    LineForm{in(Section::configuration), Place::event, 0, "", Target::title, Place::body},
    failure(Section::configuration, "Could not load configuration: {:message}",
            Code::configuration),
    LineForm{in(Section::configuration), Place::body, 1, "QUELLBRIGHT CONFIGURATION", Target::title,
             Place::rows, Code::noActive},
    LineForm{in(Section::configuration), Place::rows, 1,
             "{label=ConfigurationName}{dots}: {value:text}", Target::rows, Place::rows,
             Code::severalActive},
    LineForm{in(Section::configuration), Place::rows, 1, "{label}{dots}: {value}", Target::rows,
             Place::rows},

    head(Section::access, "ACCESS TO QUELLBRIGHTDIRECTORY: {path:file-path}: Failed!{success:no}",
         Target::itself, Code::access),
    head(Section::access, "ACCESS TO QUELLBRIGHTDIRECTORY: {path:file-path}: Succes!{success:yes}",
         Target::itself),
    head(Section::access, "ACCESS TO QUELLBRIGHTDIRECTORY: {path:file-path}", Target::itself),

    head(Section::senderFilter, "SENDERFILTER CACHE"),
    failure(Section::senderFilter, "Could not load senderfiltercache: {:message}",
            Code::senderFilter),
    body(Section::senderFilter, "{sender:sender}:{colour=Black}", Target::filters),
    body(Section::senderFilter, "{sender:sender}:{colour=White}", Target::filters),
    body(Section::senderFilter, "{sender:sender}:{colour=None}", Target::filters),
    body(Section::senderFilter, "{sender:sender}", Target::filters),

    head(Section::nabImport, "Testing NabImport."),
    failure(Section::nabImport, "No servername found. Stopping NabImport.", Code::noServerName),

    head(Section::loadingDirectory, "LOADING DIRECTORY:"),
    head(Section::importing, "IMPORTING:"),
    part(loading | importing, Place::body, "ADDRESSBOKS:", Place::body),
    LineForm{loading | importing, Place::body, 2,
             "Complete path ({path:server-path}), Port ({port}), Server ({server:server}), File "
             "({file:path})",
             Target::books, Place::body},
    part(loading | importing, Place::body, "MESSAGES", Place::messages),
    message("NAMEGetAddressBooks call to server {:server}failed: {:message}", Code::books),
    message("NAMEGetAddressBooks call to server {:server}", Code::books),
    message("NAMEGetAddressBooks with no servername specified failed: {:message}", Code::books),
    message("No Addressbooks found, using names.nsf.", Code::books),
    message("Special setting - use names.nsf exclusively.", Code::none),
    message("Could not load Default Recipient Profile: {:message}", Code::load),
    message("AddressBooksError: Could not read entry ({:server-path})OSPathNetParse{:message}",
            Code::load),
    message("AddressBooksError: {:message}", Code::load),
    message("ReadDirectoryError: {:message}", Code::load),
    message("DirectoryEntryError: {:message}", Code::entry),
    message("Notehandle Error: {:message}", Code::entry),
    message("NsfNote error: {:message}", Code::entry),
    entryTitle(Place::body),
    entryTitle(Place::messages),
    entryTitle(Place::entry),
    entry("Type............: {type}", 1),
    entry("ReplicaId.......: {replica_id:replica-id}", 2),
    entry("Server name.....: {server:server}", 3),
    entry("Filepath........: {file_path:path}", 4),
    entry("Name............: {name:person}", 5),
    entry("Full name.......: {full_name:person}", 6),
    entry("Status..........: {status:message}", 7),
    entry("Ready for import: Yes{ready:yes}", 8),
    entry("Ready for import: No{ready:no}", 8),
    part(loading | importing, Place::messages, "IMPORT RESULT:{:number}", Place::result),
    part(importing, Place::body, "IMPORT RESULT:{:number}", Place::result),
    part(importing, Place::entry, "IMPORT RESULT:{:number}", Place::result),
    result("Processed.: {processed:number}", 1),
    result("Failed....: {failed:number}", 2),
    result("Updated...: {updated:number}", 3),
    result("Created...: {created:number}", 4, Place::created),
    lastResult(Place::body),
    lastResult(Place::messages),
    lastResult(Place::entry),
    lastResult(Place::result),
    lastResult(Place::created),
    part(loading | importing, Place::created, "MESSAGES:", Place::importMessages),
    importMessage("Filepath not set."),
    importMessage("OSPathNetConstruct failed: {:message}"),
    importMessage("NSFDbOpenExtended failed (Path: {:server-path}): {:message}"),
    importMessage("Could not read replicaId: {:message}"),
    importMessage("Could not read dbtitle: {:message}"),
    importMessage("Could not close dbconnection: {:message}"),
    importMessage("Get User By replicaId failed: {:message}"),

    head(Section::installedUpdates, "SEARCHING FOR INSTALLED UPDATES..."),
    head(Section::installedUpdates, "INSTALLED UPDATES:"),
    failure(Section::installedUpdates, "Could not complete formula search:  {:message}",
            Code::updates),
    failure(Section::installedUpdates, "Could not open or close database connection:  {:message}",
            Code::updates),
    failure(Section::installedUpdates, "Could not load updateitem:  {:message}", Code::updates),
    update(6, "Date:\t\t{date}", 1),
    update(6, "Item:\t\t{item}", 2),
    update(6, "Version:\t{version}", 3),
    update(5, "{server:server}", 0),

    head(Section::testEvents, "Creating quellbright test events."),
    head(Section::testEvents, "Done creating quellbright test events."),
    failure(Section::testEvents, "Create event error: {:message}", Code::createEvent),

    head(Section::events, "Testing Get VRX events:"),
    head(Section::events, "Done Testing Get VRX events."),
    failure(Section::events, "Error Testing Get VRX events: {:message}", Code::readEvents),
    head(Section::events, "{reported=Now} [{category=Insert Error}] {text:message}", Target::events,
         Code::event),
    LineForm{in(Section::events), Place::event, 0, "{reported} [{category}] {text:event-text}",
             Target::events, Place::body},
};

constexpr std::array sectionNames = {"starting-log",
                                     "system-environment",
                                     "domino-environment-variables",
                                     "file-check",
                                     "customer-profile",
                                     "server-profile",
                                     "filtered-users",
                                     "configuration",
                                     "access",
                                     "sender-filter",
                                     "nab-import",
                                     "loading-directory",
                                     "importing",
                                     "installed-updates",
                                     "test-events",
                                     "events",
                                     "unknown"};

}  // namespace

std::span<const LineForm> lineForms() { return table; }

const char* nameOf(Section section) { return sectionNames.at(static_cast<std::size_t>(section)); }

}  // namespace reader
