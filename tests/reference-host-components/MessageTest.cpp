// The message window, answered by a second thread as an operator would.

#include <windows.h>

#include <chrono>
#include <thread>

#include "HostFixture.h"
#include "common/Text.h"
#include "components/MessageDialogIds.h"

namespace components_test {
namespace {

struct Seen {
  std::string title, text, id, consent, refuse;
  int defaultButton = 0;
  bool owned = false;
};

// A button to press, keys to strike one after the other, or, with neither, the close box.
struct Answer {
  Answer(int pressed) : button(pressed) {}
  Answer(std::vector<WORD> struck) : keys(std::move(struck)) {}
  int button = 0;
  std::vector<WORD> keys;
};

constexpr int kCloseBox = 0;

// Waits for the message window, reads it, and answers it.
class Operator {
 public:
  explicit Operator(const Answer& answer) : thread_([this, answer] { Work(answer); }) {}
  ~Operator() {
    if (thread_.joinable()) thread_.join();
  }
  Operator(const Operator&) = delete;
  Operator& operator=(const Operator&) = delete;

  const Seen& Saw() {
    thread_.join();
    return seen_;
  }

 private:
  static std::string Text(HWND window) {
    wchar_t text[2048] = {};
    GetWindowTextW(window, text, 2048);
    return reference::Utf8(text);
  }
  static std::string Shown(HWND window, int control) {
    const HWND item = GetDlgItem(window, control);
    return item && IsWindowVisible(item) ? Text(item) : "(hidden)";
  }

  void Work(const Answer& answer) {
    HWND window = nullptr;
    for (int tries = 0; tries < 1000 && !(window && IsWindowVisible(window)); ++tries) {
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
      window = FindWindowW(L"" TARSUS_MESSAGE_CLASS, nullptr);
    }
    if (!window) return;
    seen_.title = Text(window);
    seen_.text = Shown(window, TARSUS_MESSAGE_TEXT);
    seen_.id = Shown(window, TARSUS_MESSAGE_ID);
    seen_.consent = Shown(window, TARSUS_MESSAGE_CONSENT);
    seen_.refuse = Shown(window, TARSUS_MESSAGE_REFUSE);
    seen_.defaultButton = LOWORD(SendMessageW(window, DM_GETDEFID, 0, 0));
    seen_.owned = GetWindow(window, GW_OWNER) != nullptr;
    for (const WORD key : answer.keys) PostMessageW(window, WM_KEYDOWN, key, 1);
    if (answer.keys.empty() && answer.button == kCloseBox) PostMessageW(window, WM_CLOSE, 0, 0);
    if (answer.button != kCloseBox) PostMessageW(GetDlgItem(window, answer.button), BM_CLICK, 0, 0);
  }

  Seen seen_;
  std::thread thread_;
};

class Message : public HostTest {
 protected:
  std::int32_t Show(std::int32_t id, const Answer& answer, const std::string& text1 = {}, const std::string& text2 = {},
                    const std::string& text3 = {}) {
    Operator person(answer);
    const std::int32_t code = dialog_->Show(id, text1, text2, text3);
    seen_ = person.Saw();
    return code;
  }

  std::unique_ptr<host::MessageDialog> dialog_ = factory_.CreateMessageDialog();
  Seen seen_;
};

TEST_F(Message, ShowsTextWithInsertionsAndNumber) {
  dialog_->SetDisplayOptions(1, 1);
  EXPECT_EQ(Show(60370, TARSUS_MESSAGE_CONSENT, "ä%2.ini", "C:\\&x", "drei"), 1);
  EXPECT_EQ(seen_.text, "Die Datei ä%2.ini fehlt in C:\\&x (drei, ä%2.ini).");
  EXPECT_EQ(seen_.title, "Tarsus Mitteilung");
  EXPECT_EQ(seen_.id, "ID 60370");
  EXPECT_EQ(seen_.consent, "OK");
  EXPECT_EQ(seen_.refuse, "(hidden)");
}

TEST_F(Message, AnswersWithTheButtonsCode) {
  struct Case {
    std::int32_t id;
    Answer answer;
    std::int32_t code;
  };
  const std::vector<WORD> enter = {VK_RETURN}, escape = {VK_ESCAPE}, otherButton = {VK_TAB, VK_RETURN};
  const Case cases[] = {
      {64400, TARSUS_MESSAGE_CONSENT, 2},
      {64400, TARSUS_MESSAGE_REFUSE, 1},
      {64400, kCloseBox, 1},
      {64400, enter, 2},
      {64400, escape, 1},
      {64400, otherButton, 1},
      {64530, enter, 1},
      {64530, otherButton, 2},
      {60370, TARSUS_MESSAGE_CONSENT, 1},
      {60370, kCloseBox, 1},
      {60370, enter, 1},
      {60370, escape, 1},
  };
  for (std::size_t index = 0; index < std::size(cases); ++index) {
    EXPECT_EQ(Show(cases[index].id, cases[index].answer), cases[index].code) << "case " << index;
  }
}

TEST_F(Message, OffersTheCataloguesWords) {
  Show(64400, TARSUS_MESSAGE_REFUSE);
  EXPECT_EQ(seen_.text, "Medium einlegen: 100 % leer, %4?");
  EXPECT_EQ(seen_.consent, "&Ja");
  EXPECT_EQ(seen_.refuse, "&Nein");
  EXPECT_EQ(seen_.id, "") << "the option is not set";
}

TEST_F(Message, MakesRefusalTheDefaultOfAWarning) {
  Show(64400, TARSUS_MESSAGE_REFUSE);
  EXPECT_EQ(seen_.defaultButton, TARSUS_MESSAGE_CONSENT);
  Show(64530, TARSUS_MESSAGE_REFUSE);
  EXPECT_EQ(seen_.defaultButton, TARSUS_MESSAGE_REFUSE);
}

TEST_F(Message, NamesNumbersThatAreNotDefined) {
  for (const std::int32_t id : {60999, 12345}) {
    EXPECT_EQ(Show(id, TARSUS_MESSAGE_CONSENT), 1);
    EXPECT_EQ(seen_.text, std::to_string(id) + ": Not Defined!");
  }
}

TEST_F(Message, SpeaksWithoutItsCatalogue) {
  const WithoutDatabase gone;
  EXPECT_EQ(Show(60320, TARSUS_MESSAGE_CONSENT), 1);
  EXPECT_EQ(seen_.text, "The message catalogue could not be opened.");
  EXPECT_EQ(seen_.consent, "OK");
  Show(64400, TARSUS_MESSAGE_CONSENT);
  EXPECT_NE(seen_.text.find("64400"), std::string::npos);
  EXPECT_EQ(seen_.refuse, "(hidden)") << "what cannot be read cannot be consented to";
}

TEST_F(Message, BlocksTheCallersWindowWhenItIsToStayAboveIt) {
  const HWND caller = CreateWindowW(L"STATIC", L"caller", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 300, 200, nullptr,
                                    nullptr, nullptr, nullptr);
  Show(60370, TARSUS_MESSAGE_CONSENT);
  EXPECT_FALSE(seen_.owned);
  dialog_->SetDisplayOptions(1, 1);
  Show(60370, TARSUS_MESSAGE_CONSENT);
  EXPECT_TRUE(seen_.owned);
  EXPECT_TRUE(IsWindowEnabled(caller)) << "afterwards";
  DestroyWindow(caller);
}

}  // namespace
}  // namespace components_test
