#include "report/code.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace reader {
namespace {

// What several lines have in common: QBConf.nsf itself cannot be read.
constexpr std::string_view mendDatabase =
    "Check that QBConf.nsf lies in the data directory, that the account of the server may read and "
    "write it, and that it opens in a Notes client. If it is damaged, bring back a copy of it.";
constexpr std::string_view reasonAtTheEnd =
    "The words at the end of the line give the reason: the field that could not be read, or what "
    "the Notes library said.";
constexpr std::string_view dataOfTheCustomer =
    "Bring back a copy of QBConf.nsf from a backup or from another server. Installing the add-on "
    "again does not help: what is missing are this customer's own data.";
constexpr std::string_view mailFileUnread =
    "A mail file of the address book was opened but could not be read: its entry is not imported.";
constexpr std::string_view mailFileDamaged =
    "Check the mail files on this server: one may be damaged. The line does not say which; it is "
    "none of those that stand under DIRECTORY ENTRY.";
constexpr std::string_view endsInImport =
    "Run the tool again. If the report ends here again, look in the address books for a person or "
    "mail-in database whose field MailFile holds one or two characters only, which ends the run. "
    "Otherwise look for a full disk, and for a \"+\" with letters behind it in the title of a mail "
    "file or the name of an address book.";

// By the number of the code.
constexpr std::array words = {
    CodeWords{},
    CodeWords{
        .name = "not-wired",
        .severity = Severity::error,
        .sentence =
            "This variable of notes.ini does not hold this name in just these letters, capitals "
            "too: most likely the Domino server does not load this part of the add-on.",
        .advice = "Add the name to this variable of notes.ini, in just these letters and with a "
                  "comma between it and other names, and restart the server.",
        .look = "SYSTEM ENVIRONMENT shows what the variable holds. Only commas part names there; a "
                "name in other capitals is another name for the tool.",
        .exportSentence =
            "The report was made without the notes.ini of the server: this line tells "
            "nothing of the server.",
        .exportAdvice = "Make the report again with the notes.ini of the server."},
    CodeWords{
        .name = "file-missing",
        .severity = Severity::error,
        .sentence = "A file of the add-on is not there: what needs it does not work.",
        .advice = "Install the add-on again, in the version that this server has.",
        .look = "The line has the whole path. SERVERPROFILE shows the versions of the add-on.",
        .exportSentence = "An export holds none of the server's files: this line tells nothing of "
                          "the server.",
        .exportAdvice = "Nothing. Only the server itself can tell whether the file is there."},
    CodeWords{.name = "customer",
              .severity = Severity::warning,
              .sentence =
                  "The customer profile, which tells who uses the add-on, could not be read "
                  "from the add-on's database QBConf.nsf.",
              .advice = "Open the customer profile in QBConf.nsf and save it anew.",
              .look = reasonAtTheEnd},
    CodeWords{.name = "server",
              .severity = Severity::warning,
              .sentence =
                  "The profile of this server, which holds the versions of the add-on, could "
                  "not be read from the add-on's database QBConf.nsf.",
              .advice = "Check that QBConf.nsf opens, and that the profile of this server in it "
                        "holds texts only.",
              .look = reasonAtTheEnd},
    CodeWords{.name = "users",
              .severity = Severity::warning,
              .sentence = "The users whose mail is filtered could not be counted in the add-on's "
                          "database QBConf.nsf.",
              .advice = mendDatabase,
              .look = reasonAtTheEnd},
    CodeWords{.name = "configuration",
              .severity = Severity::error,
              .sentence = "The active configuration could not be read from the add-on's database "
                          "QBConf.nsf: most likely the add-on cannot read its settings either.",
              .advice = mendDatabase,
              .look = reasonAtTheEnd},
    CodeWords{
        .name = "no-active",
        .severity = Severity::warning,
        .sentence = "No configuration is active: the add-on works with its defaults.",
        .advice = "Set one of the configuration documents in QBConf.nsf active.",
        .look = "Under the title each setting of an active configuration has a row. If QBConf.nsf "
                "could not be read at all, another line says so.",
        .lines = "This title, where no row follows it."},
    CodeWords{.name = "several-active",
              .severity = Severity::warning,
              .sentence =
                  "More than one configuration is active, and this is a further one: what it "
                  "says mixes with the settings of those above it.",
              .advice = "Leave one of the configuration documents in QBConf.nsf active.",
              .look = "Each active configuration begins with such a row; the rows below are its "
                      "settings.",
              .lines = "Each such row but the first."},
    CodeWords{.name = "access",
              .severity = Severity::warning,
              .sentence =
                  "The tool could not write a file to the add-on's folder Quellbright: most "
                  "likely the add-on cannot write there either.",
              .advice = "Give the account of the server, and the one that the tool ran with, the "
                        "right to write to the folder Quellbright, and look at the free space.",
              .look = "The line has the path of the file."},
    CodeWords{.name = "sender-filter",
              .severity = Severity::warning,
              .sentence =
                  "The black and white lists of senders could not be read from the add-on's "
                  "database QBConf.nsf.",
              .advice = mendDatabase,
              .look = reasonAtTheEnd},
    CodeWords{.name = "no-server-name",
              .severity = Severity::warning,
              .sentence = "notes.ini does not tell the name of the server: the tool cannot import "
                          "users from the address books.",
              .advice = "Set ServerName in notes.ini to the name of the server.",
              .look =
                  "If nearly all variables of SYSTEM ENVIRONMENT are empty, the notes.ini of the "
                  "server was not the one that was read."},
    CodeWords{.name = "books",
              .severity = Severity::warning,
              .sentence = "The server's address books could not be listed: users of address books "
                          "other than names.nsf are missing from the import.",
              .advice =
                  "Check the variable Names in notes.ini, and that each address book opens on "
                  "this server.",
              .look = "ADDRESSBOKS, a few lines above, lists the address books that are read."},
    CodeWords{
        .name = "load",
        .severity = Severity::warning,
        .sentence = "An address book could not be read to its end: the rest of it, and the "
                    "address books behind it, are missing from the import.",
        .advice = "Open the address book that the line names, or else each of those under "
                  "ADDRESSBOKS: one is missing or damaged. Take one that is not used any more "
                  "out of the variable Names in notes.ini.",
        .look = "ADDRESSBOKS, a few lines above, lists the address books in the order in which "
                "they are read. The words at the end of the line give the reason."},
    CodeWords{.name = "entry",
              .severity = Severity::note,
              .sentence =
                  "A document of an address book could not be read: the person or mail-in database "
                  "is not imported.",
              .advice =
                  "Look in the address books for a person or mail-in database in which the field "
                  "that the line names is missing or no text, and correct or delete the document. "
                  "If the line names no field, an address book may be damaged.",
              .look = "The line names the field, but not the document. ADDRESSBOKS, a few lines "
                      "above, lists the address books."},
    CodeWords{.name = "import",
              .severity = Severity::note,
              .sentence = "The mail file of a person or mail-in database could not be opened: the "
                          "entry is not imported.",
              .advice = "Nothing if the mail file lies on another server: that is usual. Otherwise "
                        "check the fields MailServer and MailFile in the address book, and whether "
                        "the file is there.",
              .look = "The line has the path; the words behind it give the reason."},
    CodeWords{.name = "updates",
              .severity = Severity::warning,
              .sentence = "The list of installed updates could not be read from the add-on's "
                          "database QBConf.nsf.",
              .advice = mendDatabase,
              .look = reasonAtTheEnd},
    CodeWords{.name = "create-event",
              .severity = Severity::warning,
              .sentence = "The tool could not write an event to the add-on's database QBConf.nsf: "
                          "most likely the add-on cannot either.",
              .advice = "Give the server the right to create documents in QBConf.nsf, and look at "
                        "the free space.",
              .look = reasonAtTheEnd},
    CodeWords{.name = "read-events",
              .severity = Severity::warning,
              .sentence = "The events could not be read from the add-on's database QBConf.nsf.",
              .advice = mendDatabase,
              .look = reasonAtTheEnd,
              .lines = "Directly behind \"Testing Get VRX events:\"."},
    CodeWords{
        .name = "event",
        .severity = Severity::note,
        .sentence = "An event in the add-on's database QBConf.nsf could not be read: the report "
                    "does not show it.",
        .advice = "Look in QBConf.nsf for an event in which the field that the line names is "
                  "missing or of another kind, and correct or delete it. If the line names no "
                  "field, QBConf.nsf may be damaged.",
        .look = "The line names the field, but not the document."},
    CodeWords{
        .name = "no-end",
        .severity = Severity::warning,
        .sentence = "This is the last thing that the report tells of its run, and not its end: "
                    "the run was stopped or still goes on, the disk was full, or the report "
                    "could not take a character.",
        .advice = "Run the tool again. If the report ends here again, look for a full disk, and "
                  "for a \"+\" with three letters or more behind it in the text that should "
                  "follow: in a setting of notes.ini, a path, or the title of a mail file.",
        .look = "All sections that should follow are missing. With the word stdout behind the "
                "path the tool shows on the console what the report could not take.",
        .lines = "The first line of the newest entry of a run, unless that is \"Done Testing "
                 "Get VRX events.\"."},
    CodeWords{
        .name = "overwritten",
        .severity = Severity::note,
        .sentence = "The report does not begin where its run began: most likely it reached its "
                    "size limit and started over, so that its beginning is lost.",
        .advice = "Read what is left. If you need all of it, run the tool again with the word "
                  "stdout behind the path, and keep what it writes to the console.",
        .look = "What is left is read in the order in which it was written. Sections that are "
                "missing may be among what is lost.",
        .lines = "The first line of the first entry in the file, unless that is \"STARTING "
                 "LOG\"."},
    CodeWords{.name = "late-start",
              .severity = Severity::note,
              .sentence = "The report could not be opened when the run began: the sections before "
                          "this line are missing.",
              .advice =
                  "Run the tool again, alone, and read the new report. If its beginning is "
                  "missing too, check the rights of the folder Quellbright and the free space.",
              .look = "The next line tells where the report sets in.",
              .lines = "\"STARTING LOG\", unless the next entry of the run is \"SYSTEM "
                       "ENVIRONMENT:\"."},
    CodeWords{.name = "several-runs",
              .severity = Severity::note,
              .sentence =
                  "The file holds more than one run, and here a further one begins: runs of "
                  "the same second write to one file.",
              .advice = "Run the tool again, alone, and read the new report.",
              .look = "The entries of a run have the same two numbers in brackets, those of its "
                      "process and thread.",
              .lines = "The first line of each run but the first."}};
static_assert(words.size() == static_cast<std::size_t>(Code::severalRuns) + 1);

constexpr auto codes = [] {
  std::array<Code, words.size() - 1> all{};
  for (std::size_t index = 0; index < all.size(); ++index)
    all.at(index) = static_cast<Code>(index + 1);
  return all;
}();

constexpr LineWords ownWords[] = {
    {Code::fileMissing, "", "QBConf.nsf was not found.",
     "The add-on's database QBConf.nsf is not there, and with it all its settings and users.",
     dataOfTheCustomer},
    {Code::customer, "Could not load Customer profile: Could not open database connection:", "", "",
     mendDatabase},
    {Code::books, "NAMEGetAddressBooks call to server ", "",
     "The server did not list its address books when it was asked by its name; the tool then asks "
     "without a name.",
     "Check that ServerName in notes.ini is the name of this server. If the next line is no "
     "failure "
     "too, the address books were found all the same."},
    {Code::load,
     "Could not load Default Recipient Profile: Could not load Default Profile Could not ", "",
     "The add-on's database QBConf.nsf could not be opened or closed: no users are imported at "
     "all.",
     mendDatabase},
    {Code::load, "Could not load Default Recipient Profile:", "",
     "The default recipient profile in the add-on's database QBConf.nsf could not be read: no "
     "users "
     "are imported at all.",
     "Open the default recipient profile in QBConf.nsf and save it anew."},
    {Code::load, "AddressBooksError:", "",
     "The path of an address book is none for the Notes library: no address book is read, and no "
     "users are imported at all.",
     "Correct the path of this address book, in the variable Names of notes.ini or where else the "
     "server has it from."},
    {Code::entry, "DirectoryEntryError: Note error:", "",
     "A person in an address book has no field FullName, or one that holds no text: the person is "
     "not imported.",
     "Look in the address books for a person without a FullName, and correct or delete the "
     "document."},
    {Code::entry, "Notehandle Error:", "",
     "A document of an address book could not be opened or closed: the person or mail-in database "
     "is not imported.",
     "Check the address books on this server: one may be damaged."},
    {Code::import, "Filepath not set.", "",
     "A person or mail-in database in the address book has no mail file: the entry is not "
     "imported.",
     "Nothing if there is to be none: that is usual. Otherwise enter the mail file in the field "
     "MailFile of the document."},
    {Code::import, "OSPathNetConstruct failed:", "",
     "Server and mail file of an entry in the address book make no path: the entry is not "
     "imported.",
     "Look in the address books for an entry whose fields MailServer or MailFile cannot be right, "
     "and correct them. The line does not say which."},
    {Code::import, "Could not read replicaId:", "", mailFileUnread, mailFileDamaged},
    {Code::import, "Could not read dbtitle:", "", mailFileUnread, mailFileDamaged},
    {Code::import, "Could not close dbconnection:", "", mailFileUnread, mailFileDamaged},
    {Code::import, "Get User By replicaId failed:", "",
     "The add-on's database QBConf.nsf could not be searched for the profile of a user: the entry "
     "is "
     "not imported.",
     mendDatabase},
    {Code::updates, "Could not load updateitem:  Could not ", "", "", mendDatabase},
    {Code::updates, "Could not load updateitem:  ", "",
     "A document of an installed update in the add-on's database QBConf.nsf could not be read: "
     "none "
     "of the installed updates is shown.",
     "Look in QBConf.nsf for an installed update in which the field that the line names is missing "
     "or of another kind, and correct or delete it."},
    {Code::createEvent, "Create event error: DBconecction failed:", "", "", mendDatabase},
    {Code::event, "Now [Insert Error] NsfDbConnection Error:", "", "", mendDatabase},
    {Code::noEnd, "LOADING DIRECTORY:", "", "", endsInImport},
    {Code::noEnd, "IMPORTING:", "", "", endsInImport},
};

constexpr std::array<std::string_view, 3> severityNames = {"note", "warning", "error"};

}  // namespace

std::span<const Code> allCodes() { return codes; }

const CodeWords& wordsOf(Code code) { return words.at(static_cast<std::size_t>(code)); }

std::span<const LineWords> lineWords() { return ownWords; }

std::string_view nameOf(Code code) { return wordsOf(code).name; }

std::optional<Code> codeNamed(std::string_view name) {
  const auto found = std::ranges::find(codes, name, [](Code code) { return nameOf(code); });
  return found == codes.end() ? std::nullopt : std::optional(*found);
}

std::string_view nameOf(Severity severity) {
  return severityNames.at(static_cast<std::size_t>(severity));
}

std::optional<Severity> severityNamed(std::string_view name) {
  const auto found = std::ranges::find(severityNames, name);
  if (found == severityNames.end()) return std::nullopt;
  return static_cast<Severity>(found - severityNames.begin());
}

}  // namespace reader
