// The host's path table, and variables that it does not know.
#include "unit/Station.h"

namespace {

using base::Result;
using enum base::MessageId;

TEST_F(AppTest, PathEntries) {
  std::string value = "kept";
  EXPECT_EQ(application.paths.GetPathEntry("Nowhere", value), Result::Failed);
  EXPECT_EQ(value, "kept");
  host.qx32.pathTable["Temp"] = std::string(600, 'x');
  EXPECT_EQ(application.paths.GetPathEntry("Temp", value), Result::Done);
  EXPECT_EQ(value.size(), 512u);
}

TEST_F(AppTest, VariablesThatThePathTableDoesNotKnow) {
  for (const char* item : {"%Nowhere%\\a", "%Temp%\\%System%\\a", "100%", "%%"}) {
    host.person.ExpectMessage(PathEntryUnreadable);
    std::string changed = item;
    EXPECT_EQ(application.paths.ExpandPathVariable(changed), Result::Failed) << item;
    EXPECT_EQ(changed, item);
  }
}

}  // namespace
