// The operation log, the message catalogue and the host's records.
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

// Of the callers the innermost one comes next, and whoever shows the failure last. Another message on the way changes
// nothing.
TEST_F(CatalogueTest, TheMessageOfTheStepThatFailedWins) {
  for (const Result result : {Result::Failed, Result::StepFailed}) {
    base::Outcome own = base::Outcome(result, BackupLabelFailed).OrSay(BackupNotWritten);
    base::Outcome given = base::Outcome(result, "why").OrSay(DescriptorNotMade).OrSay(BackupNotWritten);
    EXPECT_EQ(given.cause, "why");
    for (const auto id : {BackupWorkFolderNotRemoved, BackupLabelFailed, DescriptorNotMade, BackupNotWritten})
      host.person.ExpectMessage(id);
    application.messages.ShowMessage(BackupWorkFolderNotRemoved);
    application.failures.Show(own, BackupCopyFailed);
    application.failures.Show(given, BackupCopyFailed);
    application.failures.Show({result, "no message"}, BackupNotWritten);
  }
  for (const Result result : {Result::Done, Result::Stopped})
    EXPECT_EQ(base::Outcome(result).OrSay(BackupNotWritten).PendingMessageId, None);
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
  application.state.UserId = "U1";
  EXPECT_EQ(application.records.RecordCategoryPhase(app::Phase::Start, 9), Result::Done);
  EXPECT_EQ(application.records.RecordCategoryPhase(app::Phase::Start, 10), Result::Failed);
  EXPECT_EQ(host.Told().auditRecords, Names{"U1||"});
  host.calls.FailFrom("ComponentFactory", "CreateAuditTrail");
  EXPECT_EQ(application.records.RecordCategoryPhase(app::Phase::Start, 0), Result::Failed);
}

TEST_F(AppTest, OperationsAreRecordedWhenTheRecorderWasLost) {
  application.state.HostName = "WS1";
  application.state.UserId = "U1";
  application.records.RecordOperation("MainMenu", "END");
  EXPECT_EQ(host.Told().operations, std::vector<std::string>{"WS1|U1|BackupUtility|MainMenu|END"});
  application.records.ReleaseOperationRecorder();
  host.calls.FailFrom("ComponentFactory", "CreateOperationRecorder");
  application.records.RecordOperation("MainMenu", "END");
}

}  // namespace
