// The operation log, the message catalogue, the host's records and its path table.
#include "unit/Station.h"

namespace {

using base::Result;
using enum base::MessageId;

TEST(LogLine, TagsLineUp) {
  const std::pair<int, const char*> rows[] = {
      {0, "[2012/03/04 05:06:07] [Warning]     text"}, {1, "[2012/03/04 05:06:07] [Question]    text"},
      {2, "[2012/03/04 05:06:07] [Exclamation] text"}, {3, "[2012/03/04 05:06:07] [Informatin]  text"},
      {9, "[2012/03/04 05:06:07] [Error]       text"}, {5, "[2012/03/04 05:06:07]text"},
  };
  for (const auto& [level, line] : rows)
    EXPECT_EQ(app::FormatLogLine({2012, 3, 4, 5, 6, 7}, static_cast<app::LogLevel>(level), "text"), line);
}

TEST_F(CatalogueTest, ATextThatIsMissingOrNullDoesNotHideTheNext) {
  host.catalogue.rows[OkCaption] = std::nullopt;
  EXPECT_EQ(application.messages.GetMessageText(OkCaption), "Not Defined!");
  EXPECT_EQ(application.messages.GetMessageText(base::MessageId{12345}), "Not Defined!");
  EXPECT_EQ(application.messages.GetMessageText(SignInWord), "Sign-in");
  EXPECT_FALSE(host.catalogue.AtEnd());  // the whole table is in view again
}

TEST_F(CatalogueTest, AFilterThatFailsYieldsNoOtherRowsText) {
  for (const std::size_t n : {1u, 2u}) {
    host.calls.FailFrom("CatalogueTable", "SetFilter", n);
    EXPECT_EQ(application.messages.GetMessageText(SignInWord), "Not Defined!");
    host.calls.Reset();
  }
}

TEST_F(CatalogueTest, InsertionsComeInTheirPlaces) {
  host.person.ExpectMessage(BackupWorkFolderNotRemoved, host::Answer::Consented).ExpectMessage(PersonalInfoLeft);
  EXPECT_EQ(application.messages.ShowMessage(BackupWorkFolderNotRemoved, "name"), host::Answer::Consented);
  application.messages.ShowMessage(PersonalInfoLeft, "1", "2", "3");
  Names insertions;
  for (const auto& [id, first, second, third] : host.person.Messages())
    insertions.push_back(first + "|" + second + "|" + third);
  EXPECT_EQ(insertions, (Names{"||name", "1|2|3"}));
}

TEST_F(CatalogueTest, ALostDialogIsMadeAgainAndAMissingOneAnswersNothing) {
  host.person.ExpectMessage(HostNotStarted, host::Answer::Consented);
  application.messages.CreateMessageDialog();
  application.messages.ReleaseMessageDialog();
  EXPECT_TRUE(host.Told().living.empty());
  EXPECT_TRUE(application.messages.Consents(HostNotStarted));
  application.messages.ReleaseMessageDialog();
  host.calls.FailFrom("ComponentFactory", "CreateMessageDialog");
  EXPECT_EQ(application.messages.ShowMessage(HostNotStarted), host::Answer::NotShown);
}

TEST_F(AppTest, AuditTrailKnowsTenCategories) {
  EXPECT_EQ(application.records.RecordCategoryPhase(app::Phase::Start, 9), Result::Done);
  EXPECT_EQ(application.records.RecordCategoryPhase(app::Phase::Start, 10), Result::Failed);
  EXPECT_EQ(host.Told().auditRecords, Names{"||"});
}

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
