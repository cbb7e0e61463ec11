// QXSetCheck: tells whether backup sets can be restored.
#include "cabarc/Platform.h"
#include "set-check/Program.h"

namespace {

namespace platform = cabarc::platform;

class Console : public setcheck::Output {
 public:
  bool Answer(std::string_view text) override { return platform::Print(text, false); }
  void Complain(std::string_view text) override { platform::Print(text, true); }
  void ShowProgress(std::string_view text) override {
    if (!isTerminal_) return;
    std::string line = "\r" + std::string(text);
    if (text.size() < shown_) line.append(shown_ - text.size(), ' ').append("\r" + std::string(text));
    if (!text.empty() || shown_ > 0) platform::Print(line, true);
    shown_ = text.size();
  }

 private:
  const bool isTerminal_ = platform::IsTerminal(true);
  std::size_t shown_ = 0;
};

}  // namespace

int main(int argc, char** argv) {
  platform::RemoveUnfinishedWhenEnded();
  Console console;
  return static_cast<int>(setcheck::Run(platform::Arguments(argc, argv), console));
}
