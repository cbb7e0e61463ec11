// The operation log, the message catalogue and the host's records.
#include "app/Log.h"
#include "app/Messages.h"
#include "app/Records.h"
#include "unit/Station.h"

namespace {

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
  host.catalogue.rows[66001] = std::nullopt;
  EXPECT_EQ(app::GetMessageText(application, 66001), "Not Defined!");
  EXPECT_EQ(app::GetMessageText(application, 12345), "Not Defined!");
  EXPECT_EQ(app::GetMessageText(application, 10000), "Sign-in");
  EXPECT_FALSE(host.catalogue.AtEnd());  // the whole table is in view again
}

TEST_F(CatalogueTest, AFilterThatFailsYieldsNoOtherRowsText) {
  for (const std::size_t n : {1u, 2u}) {
    host.calls.FailFrom("CatalogueTable", "SetFilter", n);
    EXPECT_EQ(app::GetMessageText(application, 10000), "Not Defined!");
    host.calls.Reset();
  }
}

TEST_F(CatalogueTest, ShowingClearsThePendingMessage) {
  application.state.PendingMessageId = 60382;
  host.person.ExpectMessage(60382).ExpectMessage(60351).ExpectMessage(60361, 2).ExpectMessage(60521);
  app::ShowPendingMessage(application, 60351);
  EXPECT_EQ(application.state.PendingMessageId, 0);
  app::ShowPendingMessage(application, 60351);
  EXPECT_EQ(app::ShowMessage(application, 60361, "name"), app::kConsented);
  app::ShowMessage(application, 60521, "", "7", "");
  EXPECT_EQ(host.person.Messages()[2].text3, "name");
  EXPECT_EQ(host.person.Messages()[2].text1 + host.person.Messages()[2].text2, "");
  EXPECT_EQ(host.person.Messages()[3].text2, "7");
}

TEST_F(CatalogueTest, ALostDialogIsMadeAgainAndAMissingOneAnswersNothing) {
  host.person.ExpectMessage(60260).ExpectMessage(60260);
  app::ShowMessage(application, 60260);
  application.messageDialog.reset();
  app::ShowMessage(application, 60260);
  application.messageDialog.reset();
  host.calls.FailFrom("ComponentFactory", "CreateMessageDialog");
  application.state.PendingMessageId = 60382;
  EXPECT_EQ(app::ShowMessage(application, 60260), 0);
  EXPECT_EQ(application.state.PendingMessageId, 0);
}

TEST_F(AppTest, AuditTrailKnowsTenCategories) {
  EXPECT_EQ(app::RecordCategoryPhase(application, "U1", app::Phase::Start, 9), 0);
  EXPECT_NE(app::RecordCategoryPhase(application, "U1", app::Phase::Start, 10), 0);
  EXPECT_EQ(host.Told().auditRecords, Names{"U1||"});
  host.calls.FailFrom("ComponentFactory", "CreateAuditTrail");
  EXPECT_NE(app::RecordCategoryPhase(application, "U1", app::Phase::Start, 0), 0);
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
