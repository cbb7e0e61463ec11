// A recordset's filter and its present row.
#include "data-access/Cursor.h"

#include <gtest/gtest.h>

namespace {

using dataaccess::Cursor;

Cursor Catalogue() {
  return Cursor(reference::Rows{
      {"ID", "String"}, {true, false}, {{"1", "one"}, {"2", std::nullopt}, {"3", "O'Neill"}, {"10", "One"}}});
}

/// The IDs that are seen on a walk from the first row to the end.
std::string Walk(Cursor& cursor) {
  std::string ids;
  for (; !cursor.AtEnd(); cursor.MoveNext()) ids += *cursor.Cell(0) + " ";
  return ids;
}

TEST(Cursor, ShowsTheRowsThatMeetTheCriterion) {
  struct Case {
    const char* criterion;
    const char* ids;
  };
  constexpr Case kCases[] = {
      {"ID = 10", "10 "},        {"id=3", "3 "},           {"ID = 3.0", "3 "},          {"ID = 4", ""},
      {"ID <> 3", "1 2 10 "},    {"ID < 3", "1 2 "},       {"ID <= 3", "1 2 3 "},       {"ID > 3", "10 "},
      {"[ID] >= 3", "3 10 "},    {"ID > -1", "1 2 3 10 "}, {"String = 'ONE'", "1 10 "}, {"String = 'O''Neill'", "3 "},
      {"String <> 'one'", "3 "}, {"", "1 2 3 10 "},        {"  ", "1 2 3 10 "},
  };
  Cursor cursor = Catalogue();
  for (const Case& one : kCases) {
    ASSERT_TRUE(cursor.SetFilter(one.criterion)) << one.criterion;
    EXPECT_EQ(Walk(cursor), one.ids) << one.criterion;
  }
}

TEST(Cursor, RefusesAnythingElseAndKeepsItsFilter) {
  Cursor cursor = Catalogue();
  ASSERT_TRUE(cursor.SetFilter("ID > 2"));
  for (const char* criterion : {"ID", "ID =", "= 1", "NAME = 1", "ID = 'x'", "String = 1", "ID = 1 OR ID = 2",
                                "ID LIKE 1", "String = 'open", "String = 'a' b", "[ID = 1", "ID = 1x", "ID == 1"}) {
    EXPECT_FALSE(cursor.SetFilter(criterion)) << criterion;
  }
  EXPECT_EQ(Walk(cursor), "3 10 ");
}

TEST(Cursor, StandsOnTheFirstRowAgainAfterEachFilter) {
  Cursor cursor = Catalogue();
  EXPECT_EQ(Walk(cursor), "1 2 3 10 ");
  EXPECT_TRUE(cursor.AtEnd());
  cursor.MoveNext();
  ASSERT_TRUE(cursor.SetFilter("ID = 2"));
  EXPECT_EQ(cursor.Count(), 1U);
  EXPECT_FALSE(cursor.Cell(1).has_value());
  ASSERT_TRUE(cursor.SetFilter("ID = 99"));
  EXPECT_TRUE(cursor.IsEmpty());
  ASSERT_TRUE(cursor.SetFilter(""));
  EXPECT_EQ(*cursor.Cell(0), "1");
}

}  // namespace
