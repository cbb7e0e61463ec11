// What the fake components have been told, and what they are to answer.
#pragma once

#include <cstdint>
#include <deque>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace fakes {

/// Takes the first of the answers that are left.
inline std::int32_t Next(std::deque<std::int32_t>& answers) {
  const std::int32_t answer = answers.front();
  answers.pop_front();
  return answer;
}

/// A user of the host system. Function 2601 is the backup, 2801 the restore.
struct HostUser {
  std::string displayName;
  std::string id;
  std::string password;
  std::set<std::int32_t> functions;
  std::int32_t kind = 1;  ///< 6 is a privileged user
};

/// Answers to the statements on the study databases.
struct StudyAnswer {
  std::vector<std::vector<std::string>> rows;
  std::int32_t error = 0;
};

/// All that the components have been told, and all that they are to answer.
struct ComponentState {
  std::vector<HostUser> users;                             ///< in the order of the user view
  std::int32_t verifyFault = 0;                            ///< a non-zero answer of every password check
  std::vector<std::string> statements;                     ///< all that were run, on users and studies
  std::vector<std::string> logLines;                       ///< without their time stamps
  std::vector<std::string> operations;                     ///< "host|user|program|screen|action"
  std::vector<std::string> auditRecords;                   ///< "user|word|what"
  std::int32_t auditAnswer = 0;                            ///< of sign-ins, sign-outs and phases alike
  std::map<char, std::deque<std::int32_t>> mediaStatuses;  ///< per drive; when empty, by the disk itself
  std::vector<std::string> mediaCommands;                  ///< handed over before status queries
  std::vector<std::string> preparedDrives;
  std::int32_t prepareAnswer = 0;
  std::vector<std::string> filterCalls;        ///< "images|source" or "files|source"
  std::deque<std::int32_t> filterAnswers;      ///< 0 when empty
  std::map<std::string, StudyAnswer> studies;  ///< by the statement's beginning
};

}  // namespace fakes
