#include "documents/customer_profile.h"
#include "documents/server_profile.h"
#include "support/notes_server.h"
#include "support/rows.h"

namespace {

using documents::CustomerProfile;
using documents::ServerProfileDocument;

// Updates, which a run of the tool does not make.
class Profiles : public test::NotesServer {
 protected:
  // What an update adds to the database, or the message of its failure.
  template <typename Profile>
  std::string updated(Profile& profile) {
    const std::string before = database();
    try {
      profile.update();
    } catch (const base::Error& error) {
      return narrow(error.message());
    }
    return database().substr(before.size());
  }
};

TEST_F(Profiles, ReadingOnesThatAreNotThereWritesNothing) {
  start("");
  const std::string before = database();
  documents::customerProfileText();
  documents::serverProfileText();
  EXPECT_EQ(database(), before);
}

TEST_F(Profiles, UpdateWritesWhatChangedAndTiesTheCustomerToTheDirectory) {
  start("");
  writeDatabase("names.nsf", "");
  CustomerProfile customer;
  const std::string head = R"({"note":1,"profile":"qbcustomerprofile","user":"","items":{)";
  const std::string first =
      R"("customer_organization":"café","product_path":"","db_replica_id":"001234560000ABCD")";
  customer.setOrganization(u"caf\u00e9");
  customer.setProductPath(u"");
  EXPECT_EQ(updated(customer), head + first + "}}\n");
  recorder() = {};
  EXPECT_EQ(updated(customer), head + first + "}}\n");
  EXPECT_EQ(recorder().counts["NSFItemSetText"], 0) << "nothing has changed since";
  customer.setContact(u"1");
  customer.setEmail(u"2");
  customer.setLanguage(u"3");
  customer.setProductVersion(u"4");
  EXPECT_EQ(updated(customer), head + first +
                                   R"(,"customer_contact":"1","customer_email":"2",)"
                                   R"("product_version":"4","customer_language":"3"}})"
                                   "\n");

  ServerProfileDocument server;
  server.setServerName(u"caf\u00e9");
  server.setVrxVersion(u"3");
  EXPECT_EQ(updated(server), R"({"note":2,"profile":"qbserverprofile","user":"café","items":{)"
                             R"("server_name":"café","vrx_version":"3"}})"
                             "\n");
  server.setDominoVersion(u"1");
  server.setScanningEngineVersion(u"2");
  recorder() = {};
  EXPECT_NE(updated(server).find(R"("domino_version":"1","scanning_engine_version":"2")"),
            std::string::npos);
  EXPECT_EQ(recorder().counts["NSFItemSetText"], 2);
}

TEST_F(Profiles, EachFailedUpdateHasItsMessage) {
  start("");
  writeDatabase("names.nsf", "");
  for (const auto& [where, fields] : test::rowsOf("src/documents/failed_updates.txt", 4)) {
    writeDatabase("QBConf.nsf", "");
    CustomerProfile customer;
    customer.setEmail(u"e");
    ServerProfileDocument server;
    server.setServerName(u"other");
    fail(fields[1], std::stoi(fields[2]));
    const bool isCustomer = fields[0] == "customer";
    EXPECT_EQ(isCustomer ? updated(customer) : updated(server), fields[3]) << where;
  }
}

}  // namespace
