// Tarsus.MessageDialog: shows the host's messages by number.
#pragma once

#include "components/Component.h"

namespace components {

class MessageDialog final : public Component {
 public:
  MessageDialog();

  /// 1: the message's number stands in the window's corner. 0 as long as it is not set.
  void SetDisplayOption1(std::int32_t value) { showId_ = value == 1; }
  /// 1: the window belongs to the caller's active window, stays above it and blocks it. 0, as
  /// long as it is not set: the window stands by itself above all windows, and blocks none.
  void SetDisplayOption2(std::int32_t value) { owned_ = value == 1; }

  /// Shows message `id` with its insertions "%1", "%2", "%3" and waits for the answer, serving
  /// the thread's messages. The chosen button's code: 1 OK or refusal, 2 consent, 0 not shown.
  std::int32_t ShowMessage(std::int32_t id, const std::string& text1, const std::string& text2,
                           const std::string& text3);

 private:
  bool showId_ = false;
  bool owned_ = false;
};

}  // namespace components
