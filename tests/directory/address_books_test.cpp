#include "directory/address_books.h"

#include "support/notes_server.h"

namespace {

using directory::AddressBook;
using directory::AddressBooks;

using test::unknown;

class Books : public test::NotesServer {
 protected:
  // The lines of the printed list without their tabs and without its first two; the message of a
  // failure, as one line, where there is one.
  static std::vector<std::string> linesOf(const AddressBooks& books) {
    std::string text = narrow(books.print(1)) + "\n\t";
    std::vector<std::string> lines;
    EXPECT_TRUE(text.starts_with("\n\tADDRESSBOKS:\n\t")) << text;
    for (std::size_t end = 0; (end = text.find("\n\t")) != std::string::npos;
         text.erase(0, end + 2)) {
      lines.push_back(text.substr(0, end));
    }
    lines.erase(lines.begin(), lines.begin() + 2);
    return lines;
  }

  static std::vector<std::string> loaded(const std::u16string& server, bool useNamesOnly = false) {
    AddressBooks books;
    try {
      books.load(server, useNamesOnly);
    } catch (const AddressBooks::AddressBooksError& error) {
      return {"AddressBooksError: " + narrow(error.message())};
    } catch (const AddressBook::AddressBookError& error) {
      return {"AddressBookError: " + narrow(error.message())};
    }
    return linesOf(books);
  }

  static std::string book(const std::string& path, const std::string& server = {}) {
    return "Complete path (" + (server.empty() ? "" : server + "!!") + path +
           "), Port (), Server (" + server + "), File (" + path + ")";
  }
};

TEST_F(Books, EachFallBackLeavesItsMessage) {
  const std::string rejected =
      "NAMEGetAddressBooks call to server otherfailed: The remote server is not a known host";
  const std::string callTo = "NAMEGetAddressBooks call to server ";
  const std::string noServer = "NAMEGetAddressBooks with no servername specified failed: ";
  const std::string words = narrow(unknown);
  const std::string names = book("names.nsf");
  const struct {
    std::u16string server;
    bool useNamesOnly;
    int failing;  // which question for the books; 0 is all, -1 none
    std::vector<std::string> expected;
  } table[] = {
      {u"mail", false, -1, {book("names.nsf", "mail"), book("b+.nsf", "mail"), "MESSAGES"}},
      {u"", false, -1, {names, book("b+.nsf"), "MESSAGES"}},
      {u"other", false, -1, {names, book("b+.nsf"), "MESSAGES", rejected}},
      {u"mail", false, 1, {names, book("b+.nsf"), "MESSAGES", callTo + "mailfailed: " + words}},
      {u"mail",
       false,
       0,
       {names, "MESSAGES", callTo + "mailfailed: " + words, noServer + words,
        "No Addressbooks found, using names.nsf."}},
      {u"",
       false,
       0,
       {names, "MESSAGES", callTo + "failed: " + words, noServer + words,
        "No Addressbooks found, using names.nsf."}},
      {u"mail", true, 0, {names, "MESSAGES", "Special setting - use names.nsf exclusively."}},
  };
  // The library gives paths in UTF-7, where "+-" is a plus sign.
  start("", "Names=names,b+-\n");
  for (const auto& row : table) {
    fail(row.failing < 0 ? "" : "NAMEGetAddressBooks", row.failing);
    EXPECT_EQ(loaded(row.server, row.useNamesOnly), row.expected)
        << narrow(row.server) << row.failing;
    EXPECT_EQ(recorder().counts["OSLockObject"], recorder().counts["OSUnlockObject"]);
    EXPECT_EQ(recorder().counts["OSLockObject"], recorder().counts["OSMemFree"]);
  }
}

TEST_F(Books, EachFailedCallHasItsResultAndTheBlockIsGivenBack) {
  const struct {
    const char* operation;
    int number;
    bool useNamesOnly;
    std::string expected;
  } table[] = {
      {"OSLockObject", 1, false, "MESSAGES"},
      {"OSPathNetParse", 2, false,
       "AddressBooksError: Could not read entry (mail!!b.nsf)OSPathNetParse call failed: " +
           narrow(unknown)},
      {"OSPathNetParse", 1, true,
       "AddressBookError: OSPathNetParse call failed: " + narrow(unknown)},
  };
  start("", "Names=names,b\n");
  for (const auto& row : table) {
    fail(row.operation, row.number);
    EXPECT_EQ(loaded(u"mail", row.useNamesOnly), std::vector<std::string>{row.expected});
    EXPECT_EQ(recorder().counts["OSMemFree"], row.useNamesOnly ? 0 : 1);
  }
}

TEST_F(Books, BooksGatherUntilTheListIsReset) {
  start("");
  AddressBooks books;
  books.load(u"", true);
  books.load(u"", false);
  EXPECT_EQ(books.books().size(), 2U);
  books.reset();
  EXPECT_EQ(linesOf(books), std::vector<std::string>{"MESSAGES"});
}

TEST_F(Books, NamesNsfAloneIsAskedForByExactlyOne) {
  const std::pair<const char*, bool> table[] = {
      {"", false},
      {"vrx_use_names_nsf=1\n", true},
      {"vrx_use_names_nsf=10\n", false},
      {"vrx_use_names_nsf=\n", false},
  };
  for (const auto& [settings, expected] : table) {
    start("", settings);
    EXPECT_EQ(directory::useNamesNsf(), expected) << settings;
    notes::NotesTerm();
  }
}

}  // namespace
