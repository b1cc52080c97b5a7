#include "platform/certificate_names.h"

#include <gtest/gtest.h>

#include "support/rows.h"

namespace {

TEST(CertificateNames, AreForTheirHostsAlone) {
  for (const test::TextRow& row : test::rowsOf("lib/platform/certificate_names.txt", 3)) {
    EXPECT_EQ(platform::areNamesFor(row.fields[0], row.fields[1]), row.fields[2] == "yes")
        << row.where;
  }
}

}  // namespace
