// A recordset's filter and its present row.
#include "data-access/Cursor.h"

#include <gtest/gtest.h>

namespace {

class Cursor : public testing::Test {
 protected:
  /// The IDs that are seen on a walk from the present row to the end.
  std::string Walk() {
    std::string ids;
    for (; !cursor_.AtEnd(); cursor_.MoveNext()) ids += *cursor_.Cell(0) + " ";
    return ids;
  }

  dataaccess::Cursor cursor_{reference::Rows{
      {"ID", "String"}, {true, false}, {{"1", "one"}, {"2", std::nullopt}, {"3", "O'Neill"}, {"10", "One"}}}};
};

TEST_F(Cursor, ShowsTheRowsThatMeetTheCriterion) {
  const std::pair<const char*, const char*> cases[] = {
      {"ID = 10", "10 "},        {"id=3", "3 "},           {"ID = 3.0", "3 "},          {"ID = 4", ""},
      {"ID <> 3", "1 2 10 "},    {"ID < 3", "1 2 "},       {"ID <= 3", "1 2 3 "},       {"ID > 3", "10 "},
      {"[ID] >= 3", "3 10 "},    {"ID > -1", "1 2 3 10 "}, {"String = 'ONE'", "1 10 "}, {"String = 'O''Neill'", "3 "},
      {"String <> 'one'", "3 "}, {"", "1 2 3 10 "},        {"  ", "1 2 3 10 "}};
  for (const auto& [criterion, ids] : cases) {
    ASSERT_TRUE(cursor_.SetFilter(criterion)) << criterion;
    EXPECT_EQ(Walk(), ids) << criterion;
  }
}

TEST_F(Cursor, RefusesAnythingElseAndKeepsItsFilter) {
  ASSERT_TRUE(cursor_.SetFilter("ID > 2"));
  for (const char* criterion : {"ID", "ID =", "= 1", "NAME = 1", "ID = 'x'", "String = 1", "ID = 1 OR ID = 2",
                                "ID LIKE 1", "String = 'open", "String = 'a' b", "[ID = 1", "ID = 1x", "ID == 1"}) {
    EXPECT_FALSE(cursor_.SetFilter(criterion)) << criterion;
  }
  EXPECT_EQ(Walk(), "3 10 ");
}

TEST_F(Cursor, StandsOnTheFirstRowAgainAfterEachFilter) {
  EXPECT_EQ(Walk(), "1 2 3 10 ");
  cursor_.MoveNext();
  ASSERT_TRUE(cursor_.SetFilter("ID = 2"));
  EXPECT_EQ(cursor_.Count(), 1U);
  EXPECT_FALSE(cursor_.Cell(1).has_value());
  ASSERT_TRUE(cursor_.SetFilter("ID = 99"));
  EXPECT_TRUE(cursor_.IsEmpty());
}

}  // namespace
