// Connection strings taken apart and put together.
#include "common/ConnectionText.h"

#include <gtest/gtest.h>

namespace {

using reference::ConnectionText;
using reference::ParseAttachments;

TEST(ConnectionText, DropsThePaddingOfFixedFields) {
  const ConnectionText text("DRIVER=SQLite3; database = C:\\a b.db" + std::string(200, ' '));
  EXPECT_EQ(text.Value("Database"), "C:\\a b.db");
  EXPECT_EQ(text.Text(), "DRIVER=SQLite3;database=C:\\a b.db;");
}

TEST(ConnectionText, KeepsWhatItsOwnKeysLeave) {
  ConnectionText text("DRIVER=SQLite3;Attach=A=C:\\a.db,B=C:\\b.db;Timeout=7;nonsense;=");
  EXPECT_EQ(text.Take("ATTACH"), "A=C:\\a.db,B=C:\\b.db");
  EXPECT_EQ(text.Take("Attach"), "");
  text.Set("timeout", "9");
  text.Set("NoCreat", "1");
  EXPECT_EQ(text.Text(), "DRIVER=SQLite3;Timeout=9;NoCreat=1;");
}

TEST(ConnectionText, ListsAttachments) {
  const auto list = ParseAttachments("Patient=C:\\p.db, Study = C:\\s=1.db");
  ASSERT_EQ(list.size(), 2U);
  EXPECT_EQ(list[0].name, "Patient");
  EXPECT_EQ(list[1].name, "Study");
  EXPECT_EQ(list[1].path, "C:\\s=1.db");
  EXPECT_TRUE(ParseAttachments("").empty());
}

}  // namespace
