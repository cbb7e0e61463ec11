// The list of this server's components.
#include "com/Server.h"

#include "components/Components.h"

namespace {

using namespace components;

template <typename Class>
IUnknown* Create() {
  return NewObject(std::make_unique<Class>());
}

// {8C1F6E30-4B7D-4D5A-9E62-5D0B7A31C4nn}
constexpr CLSID ClassId(unsigned char last) {
  return {0x8C1F6E30, 0x4B7D, 0x4D5A, {0x9E, 0x62, 0x5D, 0x0B, 0x7A, 0x31, 0xC4, last}};
}

constexpr reference::ServedClass kComponents[] = {
    {L"Tarsus.MessageDialog", ClassId(0x01), Create<MessageDialog>},
    {L"Tarsus.LogWriter", ClassId(0x02), Create<LogWriter>},
    {L"Tarsus.OperationRecorder", ClassId(0x03), Create<OperationRecorder>},
    {L"Tarsus.AuditTrail", ClassId(0x04), Create<AuditTrail>},
    {L"Tarsus.UserQuery", ClassId(0x05), Create<UserQuery>},
    {L"Tarsus.UserAuthenticator", ClassId(0x06), Create<UserAuthenticator>},
    {L"Tarsus.MediaComponent", ClassId(0x07), Create<MediaComponent>},
    {L"Tarsus.PersonalInfoFilter", ClassId(0x08), Create<PersonalInfoFilter>},
    {L"Tarsus.StudyDatabaseQuery", ClassId(0x09), Create<StudyDatabaseQuery>},
};

}  // namespace

const reference::Server& reference::ThisServer() {
  static constexpr Server kServer{kComponents};
  return kServer;
}
