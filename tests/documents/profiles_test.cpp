#include "documents/customer_profile.h"
#include "documents/server_profile.h"
#include "support/notes_server.h"

namespace {

using documents::CustomerProfile;
using documents::ServerProfileDocument;

const std::string customerNote =
    R"({"note":1,"profile":"qbcustomerprofile","items":{"customer_organization":"Acme","customer_contact":"J\u00f6rg","customer_email":"a@b","customer_language":"","db_replica_id":"ID","product_path":"p\\q","product_version":"1"}})"
    "\n";
const std::string serverNote =
    R"({"note":2,"profile":"qbserverprofile","user":"mail","items":{"domino_version":"8.5","scanning_engine_version":"5","vrx_version":"2"}})"
    "\n";
using test::unknown;

class Profiles : public test::NotesServer {};

TEST_F(Profiles, EachFieldHasItsLabelAndAbsentOnesAreEmpty) {
  start(customerNote + serverNote);
  EXPECT_EQ(documents::customerProfileText(),
            u"CUSTOMERPROFILE:\n\t\t\t\t\tOrganization(Acme)\n\t\t\t\t\tContact(J\u00c3\u00b6rg)"
            u"\n\t\t\t\t\tEmail(a@b)\n\t\t\t\t\tReplica Id(ID)\n\t\t\t\t\tProduct Path(p\\q)"
            u"\n\t\t\t\t\tLanguage()");
  EXPECT_EQ(documents::serverProfileText(),
            u"SERVERPROFILE:\n\t\t\t\t\tServer name(mail)\n\t\t\t\t\tDomino version(8.5)"
            u"\n\t\t\t\t\tCore version(5)\n\t\t\t\t\tVRX version(2)");
  EXPECT_EQ(CustomerProfile().print(0),
            u"CUSTOMERPROFILE:\nOrganization()\nContact()\nEmail()\nReplica Id()\nProduct Path()"
            u"\nLanguage()");
}

TEST_F(Profiles, ProfilesThatAreNotThereAreEmptyAndStayUnwritten) {
  start("");
  const std::string before = database();
  EXPECT_TRUE(documents::customerProfileText().ends_with(u"Language()"));
  EXPECT_TRUE(documents::serverProfileText().starts_with(
      u"SERVERPROFILE:\n\t\t\t\t\tServer name(mail)\n\t\t\t\t\tDomino version()"));
  EXPECT_EQ(database(), before);
}

TEST_F(Profiles, LongTextIsCutAndWrongTypeIsTold) {
  start(R"({"note":1,"profile":"qbcustomerprofile","items":{"customer_organization":")" +
        std::string(1100, 'x') + "\"}}\n" +
        R"({"note":2,"profile":"qbserverprofile","user":"mail","items":{"vrx_version":2}})"
        "\n");
  EXPECT_NE(documents::customerProfileText().find(u"(" + std::u16string(1023, u'x') + u")"),
            std::u16string::npos);
  EXPECT_EQ(documents::serverProfileText(),
            u"Could not load Server profile: Could not read note-item: Invalid item-type "
            u"\"vrx_version\" : Item is not type Text.");
}

TEST_F(Profiles, EachFailedCallShowsAsItsChain) {
  const std::u16string customer = u"Could not load Customer profile: ";
  const std::u16string server = u"Could not load Server profile: ";
  const std::u16string connection = u"Could not open database connection: ";
  const std::u16string item = u"Could not read note-item: ";
  const struct {
    const char* operation;
    int number;
    std::u16string customer, server;
  } rows[] = {
      {"NSFDbOpen", 1, connection + u"Could not open the database: QBConf.nsf: " + unknown + u".",
       connection + u"Could not open the database: QBConf.nsf: " + unknown + u"."},
      {"NSFProfileOpen", 1, u"Could not open Customer profile: " + unknown,
       u"Could not open server profile document."},
      {"NSFNoteClose", 1, u"Could not close profile note: " + unknown,
       u"Could not close server profile document."},
      {"NSFDbClose", 1,
       connection + u"Could not close connection to the database: " + unknown + u".",
       connection + u"Could not close connection to the database: " + unknown + u"."},
  };
  start(customerNote + serverNote);
  for (const auto& row : rows) {
    fail(row.operation, row.number);
    EXPECT_EQ(documents::customerProfileText(), customer + row.customer) << row.operation;
    fail(row.operation, row.number);
    EXPECT_EQ(documents::serverProfileText(), server + row.server) << row.operation;
  }
  // Of the calls for one item, the second look for it and those for its length and its type.
  const struct {
    int number;
    std::u16string expected;
  } reads[] = {
      {2, u"Item \"customer_organization\" is not present in Note."},
      {3, u"Item \"customer_organization\" is not present in Note."},
      {4, u"Item \"customer_organization\" is not present in Note."},
      {5, u"Item \"customer_organization\" is not present: Item is not present in Note."},
      {6,
       u"Item \"customer_organization\" is not present: Item \"customer_organization\" is not "
       u"present in Note."},
  };
  for (const auto& row : reads) {
    fail("NSFItemInfo", row.number);
    EXPECT_EQ(documents::customerProfileText(), customer + item + row.expected) << row.number;
    EXPECT_EQ(recorder().counts["NSFNoteClose"], 0) << "the note stays open after such a failure";
    EXPECT_EQ(recorder().counts["NSFDbClose"], 1);
  }
}

TEST_F(Profiles, FailedCloseIsTriedOnceMore) {
  start(customerNote);
  fail("NSFDbClose", 0);
  documents::customerProfileText();
  EXPECT_EQ(recorder().counts["NSFDbClose"], 2);
}

TEST_F(Profiles, UpdateWritesWhatChangedAndTiesTheProfileToTheDirectory) {
  start("");
  writeDatabase("names.nsf", "");
  CustomerProfile customer;
  customer.setOrganization(u"caf\u00e9");
  customer.setProductPath(u"");
  customer.update();
  EXPECT_TRUE(
      database().ends_with(
          R"({"note":1,"profile":"qbcustomerprofile","user":"","items":{"customer_organization":"café","product_path":"","db_replica_id":"001234560000ABCD"}})"
          "\n") ||
      database().ends_with(
          R"({"note":1,"profile":"qbcustomerprofile","items":{"customer_organization":"café","product_path":"","db_replica_id":"001234560000ABCD"}})"
          "\n"))
      << database();
  recorder() = {};
  customer.update();
  EXPECT_EQ(recorder().counts["NSFItemSetText"], 0) << "nothing has changed since";
  EXPECT_EQ(recorder().counts["NSFProfileUpdate"], 1);

  ServerProfileDocument server;
  server.setServerName(u"mail");
  server.setVrxVersion(u"3");
  server.update();
  EXPECT_EQ(documents::serverProfileText(),
            u"SERVERPROFILE:\n\t\t\t\t\tServer name(mail)\n\t\t\t\t\tDomino version()"
            u"\n\t\t\t\t\tCore version()\n\t\t\t\t\tVRX version(3)");
}

TEST_F(Profiles, EachFailedUpdateHasItsMessage) {
  const std::u16string connection = u"Could not open database connection: ";
  const std::u16string open = u"Could not open the database: QBConf.nsf: " + unknown + u".";
  const std::u16string close = u"Could not close connection to the database: " + unknown + u".";
  const std::u16string tie =
      u"Could not set dbReplicaId on the customer profile: Could not get "
      u"replicaid from names.nsf: ";
  const struct {
    const char* operation;
    int number;
    std::u16string customer, server;
  } rows[] = {
      {"NSFDbOpen", 1, connection + open, connection + open},
      {"NSFDbOpen", 2, tie + u"Could not open the database: names.nsf: " + unknown + u".", u""},
      {"NSFDbReplicaInfoGet", 1, tie + u"Could not retrieve replica information: " + unknown, u""},
      {"NSFDbClose", 1, tie + close, connection + close},
      {"NSFDbClose", 2, connection + close, u""},
      {"NSFProfileOpen", 1, u"Could not open Customer profile: " + unknown,
       u"Could not open server profile document."},
      {"NSFItemSetText", 1, u"Could not add text item to note: " + unknown,
       u"Could not add text item to note: " + unknown},
      {"NSFItemSetText", 2, u"Could not add text item to note: " + unknown, u""},
      {"NSFProfileUpdate", 1, u"Could not update configuration-profile: " + unknown,
       u"Could not update server profile document."},
      {"NSFNoteClose", 1, u"Could not close profile note: " + unknown,
       u"Could not close server profile document."},
  };
  start("");
  writeDatabase("names.nsf", "");
  const auto messageOf = [](auto&& document) -> std::u16string {
    try {
      document.update();
      return u"";
    } catch (const CustomerProfile::CustomerProfileError& error) {
      return error.message();
    } catch (const ServerProfileDocument::ServerProfileDocumentError& error) {
      return error.message();
    }
  };
  for (const auto& row : rows) {
    fail(row.operation, row.number);
    CustomerProfile customer;
    customer.setEmail(u"e");
    EXPECT_EQ(messageOf(customer), row.customer) << row.operation << row.number;
    fail(row.operation, row.number);
    ServerProfileDocument server;
    server.setServerName(u"other");
    EXPECT_EQ(messageOf(server), row.server) << row.operation << row.number;
  }
}

// The order and number of calls is what an administrator sees of the load on the server.
TEST_F(Profiles, OneReadMakesTheseCalls) {
  start(serverNote);
  documents::serverProfileText();
  std::vector<std::string> calls = recorder().calls;
  std::erase(calls, "NSFItemInfo");
  EXPECT_EQ(calls, (std::vector<std::string>{"NSFDbOpen", "OSGetEnvironmentString",
                                             "NSFProfileOpen", "NSFItemGetText", "NSFItemGetText",
                                             "NSFItemGetText", "NSFNoteClose", "NSFDbClose"}));
}

}  // namespace
