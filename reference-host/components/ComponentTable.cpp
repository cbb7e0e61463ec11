#include "components/ComponentTable.h"

#include "components/LogWriter.h"
#include "components/MediaComponent.h"
#include "components/MessageDialog.h"
#include "components/PersonalInfoFilter.h"
#include "components/Queries.h"
#include "components/Records.h"
#include "components/UserAuthenticator.h"

namespace components {
namespace {

template <typename Class>
std::unique_ptr<Component> Create() {
  return std::make_unique<Class>();
}

// {8C1F6E30-4B7D-4D5A-9E62-5D0B7A31C4nn}
constexpr CLSID ClassId(unsigned char last) {
  return {0x8C1F6E30, 0x4B7D, 0x4D5A, {0x9E, 0x62, 0x5D, 0x0B, 0x7A, 0x31, 0xC4, last}};
}

constexpr ComponentEntry kComponents[] = {
    {L"Tarsus.MessageDialog", ClassId(0x01), &Create<MessageDialog>},
    {L"Tarsus.LogWriter", ClassId(0x02), &Create<LogWriter>},
    {L"Tarsus.OperationRecorder", ClassId(0x03), &Create<OperationRecorder>},
    {L"Tarsus.AuditTrail", ClassId(0x04), &Create<AuditTrail>},
    {L"Tarsus.UserQuery", ClassId(0x05), &Create<UserQuery>},
    {L"Tarsus.UserAuthenticator", ClassId(0x06), &Create<UserAuthenticator>},
    {L"Tarsus.MediaComponent", ClassId(0x07), &Create<MediaComponent>},
    {L"Tarsus.PersonalInfoFilter", ClassId(0x08), &Create<PersonalInfoFilter>},
    {L"Tarsus.StudyDatabaseQuery", ClassId(0x09), &Create<StudyDatabaseQuery>},
};

}  // namespace

std::span<const ComponentEntry> ComponentTable() {
  return kComponents;
}

}  // namespace components
