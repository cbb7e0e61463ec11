// The COM components that the program asks the workstation for. This is the one
// table of their names; an integrator registers components under them.
#pragma once

namespace windows {

// The host's own components; "out" arguments are passed by reference.
inline constexpr wchar_t kMessageDialogProgId[] = L"Tarsus.MessageDialog";
inline constexpr wchar_t kLogWriterProgId[] = L"Tarsus.LogWriter";
inline constexpr wchar_t kOperationRecorderProgId[] = L"Tarsus.OperationRecorder";
inline constexpr wchar_t kAuditTrailProgId[] = L"Tarsus.AuditTrail";
inline constexpr wchar_t kUserQueryProgId[] = L"Tarsus.UserQuery";
inline constexpr wchar_t kUserAuthenticatorProgId[] = L"Tarsus.UserAuthenticator";
inline constexpr wchar_t kMediaComponentProgId[] = L"Tarsus.MediaComponent";
inline constexpr wchar_t kPersonalInfoFilterProgId[] = L"Tarsus.PersonalInfoFilter";
inline constexpr wchar_t kStudyDatabaseQueryProgId[] = L"Tarsus.StudyDatabaseQuery";

// Data access, part of Windows and of the Access database engine.
inline constexpr wchar_t kConnectionProgId[] = L"ADODB.Connection";
inline constexpr wchar_t kRecordsetProgId[] = L"ADODB.Recordset";
/// Engines that can compact a database, in the order in which they are tried.
inline constexpr const wchar_t* kDatabaseEngineProgIds[] = {L"DAO.DBEngine.36", L"DAO.DBEngine.120"};

}  // namespace windows
