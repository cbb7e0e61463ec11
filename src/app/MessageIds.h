// The numbers of the host's message catalogue that this program uses, named for what they say.
//
// Messages are shown by number in the host's own dialog; captions and fixed words are looked up. Every number here must
// stand in the catalogue (docs/host-integration.md), and every message in the operator's table
// (docs/manual/messages.md).
#pragma once

#include <cstdint>

#include "base/Outcome.h"

namespace base {

enum class MessageId : std::int32_t {
  None = 0,

  // Words
  SignInWord = 10000,
  SignOutWord = 10001,
  PhaseStartWord = 10002,
  PhaseEndWord = 10003,

  // Start-up, sign-in and end
  HostNotStarted = 60260,
  AuthenticationFailed = 60308,
  UserUtilityRuns = 60314,
  ServiceUtilityRuns = 60315,
  AlreadyRunning = 60316,
  CatalogueNotOpened = 60320,
  SystemDatabaseFailed = 60321,
  AppearanceUnreadable = 60322,
  NetworkDatabaseNotOpened = 60323,
  MessageTableUnnamed = 60325,
  PathEntryUnreadable = 60326,  ///< also shown where a floppy set cannot be prepared or joined

  // Backup
  BackupNotWritten = 60351,
  BackupCopyFailed = 60352,
  BackupWorkFolderNotMade = 60360,
  BackupWorkFolderNotRemoved = 60361,
  BackupSectionMissing = 60370,
  BackupNotGathered = 60371,
  DescriptorNotMade = 60372,
  BackupFormatCancelled = 60381,
  BackupFormatFailed = 60382,
  BackupLabelFailed = 60383,
  LogsNotDeleted = 60390,

  // Restore
  RestoreFailed = 60401,
  RestoreStepFailed = 60402,
  RestoreWorkFolderNotMade = 60410,
  RestoreWorkFolderNotRemoved = 60411,
  RestoreSectionMissing = 60420,
  ArchiveNotUnpacked = 60421,
  NoDescriptor = 60426,
  DescriptorIncomplete = 60427,
  OtherApplication = 60429,
  OtherVersion = 60430,
  CopyingPieceTitle = 60444,  ///< title of the shell's progress window

  // Maintenance log
  MaintenanceLogNotWritten = 60451,
  MaintenanceCopyFailed = 60452,
  MaintenanceWorkFolderNotMade = 60460,
  MaintenanceSectionMissing = 60470,
  MaintenanceLogNotGathered = 60471,
  MaintenanceFormatCancelled = 60481,
  MaintenanceFormatFailed = 60482,
  MaintenanceLabelFailed = 60483,

  // Records and counts
  SignInNotRecorded = 60500,
  SignOutNotRecorded = 60501,
  BackupNotRecorded = 60510,
  RestoreNotRecorded = 60511,
  CountsUnreadable = 60520,
  PersonalInfoLeft = 60521,  ///< the filter's code is the second insertion

  // Warnings
  BackupWarnings = 61300,   ///< shown before the success, where the catalogue has it; the third insertion is the number
  RestoreWarnings = 61400,  ///< likewise
  RestoreInterrupted = 61401,   ///< at the next start, where the catalogue has it; the third insertion is the source
  MaintenanceWarnings = 61450,  ///< likewise
  DocumentNotOpened = 61500,    ///< where the catalogue has it; the third insertion is the document
  ScheduledBackupRuns = 61603,
  BackupSpaceTooSmall = 62360,
  MaintenanceSpaceTooSmall = 62460,
  BackupDriveError = 63310,
  BackupDriveUnusable = 63311,
  BackupFloppyUnusable = 63312,
  PasswordRefused = 63360,
  NoRight = 63361,
  MediumNotPreparable = 63380,
  SourceDriveError = 63410,
  SourceDriveUnusable = 63411,
  SourceMediumUnusable = 63412,
  BackupFolderNotMade = 63413,
  MaintenanceDriveError = 63460,  ///< also shown when a floppy's piece is not copied
  MaintenanceDriveUnusable = 63461,
  MaintenanceFloppyUnusable = 63462,
  MaintenanceFolderNotMade = 63463,

  // Two-choice prompts
  AskInsertBackupMedium = 64300,
  AskForeignLabel = 64301,
  AskMakeBackupFolder = 64302,
  AskOverwriteBackup = 64303,
  AskDeleteLogs = 64304,
  AskPrepareBackupMedium = 64305,
  AskNextBackupDisk = 64306,
  AskInsertSourceMedium = 64400,
  AskRightDisk = 64401,
  AskReplaceIPCounter = 64402,
  AskNextSourceDisk = 64406,
  AskInsertMaintenanceMedium = 64450,
  AskMakeMaintenanceFolder = 64452,
  AskOverwriteMaintenance = 64453,
  AskPrepareMaintenanceMedium = 64455,
  AskNextMaintenanceDisk = 64456,
  AskUnprotected = 64530,

  // Outcomes
  BackupComplete = 65300,
  BackupStopped = 65301,
  RestoreComplete = 65400,
  RestoreStopped = 65401,
  MaintenanceComplete = 65450,
  MaintenanceStopped = 65451,

  // Captions and fixed texts
  ProgramTitle = 66000,
  OkCaption = 66001,
  CancelCaption = 66002,
  EndCaption = 66003,
  StartCaption = 66004,
  BrowseCaption = 66005,
  SignInTitle = 66010,
  UserCaption = 66011,
  PasswordCaption = 66012,
  MainMenuTitle = 66020,
  BackupMenuCaption = 66021,
  RestoreMenuCaption = 66022,
  MaintenanceMenuCaption = 66023,
  LastBackupCaption = 66024,  ///< optional
  PastJobsCaption = 66025,    ///< optional; with it, all that the dialog of past jobs needs
  BackupTitle = 66030,
  BackupPatientCaption = 66031,
  BackupSystemCaption = 66032,
  BackupLogCaption = 66033,
  DeleteLogCaption = 66034,
  BackupFrameCaption = 66035,
  BackupReportCaption = 66036,
  SelectFolderTitle = 66040,
  FolderCaption = 66041,
  SpaceCaption = 66042,
  RestoreTitle = 66050,
  RestoreFrameCaption = 66051,
  RestorePatientCaption = 66052,
  RestoreMenuDataCaption = 66053,
  RestoreSystemCaption = 66054,
  RestoreUserCaption = 66055,
  RestoreExplanationCaption = 66056,
  RestoreIPCounterCaption = 66057,
  SetupInfoCaption = 66058,
  RestoreReportCaption = 66059,
  RestoreReportSetCaption = 66060,
  SetFrameCaption = 66061,
  AppVersionCaption = 66062,
  BackupDateCaption = 66063,
  BrowserTitle = 66071,
  NotInSetNote = 66080,
  OtherVersionNote = 66081,
  FirstCategoryName = 66090,  ///< the first of nine, in the order of CategoryNames
  MaintenanceTitle = 66100,
  MaintenanceIntroduction = 66101,
  PrivacyFrameCaption = 66102,
  ProtectCaption = 66103,
  IncludeCaption = 66104,
  CountUnreadable = 66105,
  PatientCountCaption = 66106,
  StudyCountCaption = 66107,
  UserCountCaption = 66108,
  ImagesHint = 66115,
  ImagesFrameCaption = 66117,
  AllImagesCaption = 66118,
  RecentImagesCaption = 66119,
  DaysCaption = 66120,
  JobRunsReason = 66130,  ///< why the workstation must not be shut down now; optional
  JobsTitle = 66140,
  JobsCaption = 66141,
  SummaryCaption = 66142,
  PrintCaption = 66143,
  CloseCaption = 66144,
  JobResultWord = 66145,
  JobDoneWord = 66146,
  JobStoppedWord = 66147,
  JobFailedWord = 66148,
  JobMessageWord = 66149,
  JobEndedWord = 66150,
  JobDurationWord = 66151,
  JobUserWord = 66152,
  JobFolderWord = 66153,
  JobDataWord = 66154,
  JobFilesWord = 66155,
  JobSizeWord = 66156,
  JobWarningsWord = 66157,
};

}  // namespace base

namespace app {

using base::MessageId;

}  // namespace app
