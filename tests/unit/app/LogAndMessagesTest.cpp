// The operation log, the message catalogue and the host's records.
#include "app/Log.h"
#include "app/Messages.h"
#include "app/Records.h"
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
  EXPECT_EQ(app::GetMessageText(application, OkCaption), "Not Defined!");
  EXPECT_EQ(app::GetMessageText(application, base::MessageId{12345}), "Not Defined!");
  EXPECT_EQ(app::GetMessageText(application, SignInWord), "Sign-in");
  EXPECT_FALSE(host.catalogue.AtEnd());  // the whole table is in view again
}

TEST_F(CatalogueTest, AFilterThatFailsYieldsNoOtherRowsText) {
  for (const std::size_t n : {1u, 2u}) {
    host.calls.FailFrom("CatalogueTable", "SetFilter", n);
    EXPECT_EQ(app::GetMessageText(application, SignInWord), "Not Defined!");
    host.calls.Reset();
  }
}

TEST_F(CatalogueTest, ShowingClearsThePendingMessage) {
  application.state.PendingMessageId = BackupFormatFailed;
  host.person.ExpectMessage(BackupFormatFailed)
      .ExpectMessage(BackupNotWritten)
      .ExpectMessage(BackupWorkFolderNotRemoved, host::Answer::Consented)
      .ExpectMessage(PersonalInfoLeft);
  app::ShowPendingMessage(application, BackupNotWritten);
  EXPECT_EQ(application.state.PendingMessageId, None);
  app::ShowPendingMessage(application, BackupNotWritten);
  EXPECT_EQ(app::ShowMessage(application, BackupWorkFolderNotRemoved, "name"), host::Answer::Consented);
  app::ShowMessage(application, PersonalInfoLeft, "", "7", "");
  EXPECT_EQ(host.person.Messages()[2].text3, "name");
  EXPECT_EQ(host.person.Messages()[2].text1 + host.person.Messages()[2].text2, "");
  EXPECT_EQ(host.person.Messages()[3].text2, "7");
}

TEST_F(CatalogueTest, ALostDialogIsMadeAgainAndAMissingOneAnswersNothing) {
  host.person.ExpectMessage(HostNotStarted).ExpectMessage(HostNotStarted);
  app::ShowMessage(application, HostNotStarted);
  application.messageDialog.reset();
  app::ShowMessage(application, HostNotStarted);
  application.messageDialog.reset();
  host.calls.FailFrom("ComponentFactory", "CreateMessageDialog");
  application.state.PendingMessageId = BackupFormatFailed;
  EXPECT_EQ(app::ShowMessage(application, HostNotStarted), host::Answer::NotShown);
  EXPECT_EQ(application.state.PendingMessageId, None);
}

TEST_F(AppTest, AuditTrailKnowsTenCategories) {
  EXPECT_EQ(app::RecordCategoryPhase(application, "U1", app::Phase::Start, 9), Result::Done);
  EXPECT_EQ(app::RecordCategoryPhase(application, "U1", app::Phase::Start, 10), Result::Failed);
  EXPECT_EQ(host.Told().auditRecords, Names{"U1||"});
  host.calls.FailFrom("ComponentFactory", "CreateAuditTrail");
  EXPECT_EQ(app::RecordCategoryPhase(application, "U1", app::Phase::Start, 0), Result::Failed);
}

TEST_F(AppTest, OperationsAreRecordedWhenTheRecorderWasLost) {
  application.state.HostName = "WS1";
  application.state.UserId = "U1";
  app::RecordOperation(application, "MainMenu", "END");
  EXPECT_EQ(host.Told().operations, std::vector<std::string>{"WS1|U1|BackupUtility|MainMenu|END"});
  application.operationRecorder.reset();
  host.calls.FailFrom("ComponentFactory", "CreateOperationRecorder");
  app::RecordOperation(application, "MainMenu", "END");
}

}  // namespace
