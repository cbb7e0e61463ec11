// Tarsus.LogWriter: appends lines to a text log.
#pragma once

#include "components/Component.h"

namespace components {

class LogWriter final : public Component {
 public:
  LogWriter();

  void SetFilePath(const std::string& path) { path_ = path; }
  /// 1 appends; any other mode begins the file anew with the next line.
  void SetMode(std::int32_t mode) { append_ = mode == 1; }
  /// Writes `line` in the system's code page and a line end. The file is opened for this line
  /// alone, so that other programs may read, move or delete it at any time. 0, -1 on failure.
  std::int32_t WriteLine(const std::string& line);

 private:
  std::string path_;
  bool append_ = true;
};

}  // namespace components
