// Tarsus.OperationRecorder and Tarsus.AuditTrail: what operators did, kept in the
// database behind the path table's entry "AuditDB".
#pragma once

#include "components/Component.h"

namespace components {

/// All results: 0 recorded, -1 not recorded.
class OperationRecorder final : public Component {
 public:
  OperationRecorder();
  std::int32_t Record(const std::string& host, const std::string& user, const std::string& program,
                      const std::string& screen, const std::string& action);
};

/// All results: 0 recorded, -1 not recorded.
class AuditTrail final : public Component {
 public:
  AuditTrail();
  /// `word` says which of the two it is, in the language of the host.
  std::int32_t RecordSignInOut(const std::string& userId, const std::string& word, const std::string& title);
  std::int32_t RecordCategoryPhase(const std::string& userId, const std::string& phase, const std::string& category);
};

}  // namespace components
