// The message window, answered by a second thread as an operator would.
#include <chrono>
#include <functional>
#include <future>
#include <thread>

#include "HostFixture.h"
#include "app/MessageIds.h"
#include "components/MessageDialogIds.h"

namespace {

using enum base::MessageId;

struct Seen {
  std::string title, text, id, consent, refuse;
  int defaultButton = 0;
  bool owned = false;
};

/// What the operator does with the window.
using Answer = std::function<void(HWND window)>;

Answer Press(int button) {
  return [=](HWND window) { PostMessageW(GetDlgItem(window, button), BM_CLICK, 0, 0); };
}
Answer Strike(const std::vector<WORD>& keys) {
  return [=](HWND window) {
    for (const WORD key : keys) PostMessageW(window, WM_KEYDOWN, key, 1);
  };
}
void CloseBox(HWND window) {
  PostMessageW(window, WM_CLOSE, 0, 0);
}

std::string Text(HWND window) {
  wchar_t text[2048] = {};
  GetWindowTextW(window, text, 2048);
  return windows::Utf8(text);
}

std::string Shown(HWND window, int control) {
  const HWND item = GetDlgItem(window, control);
  return item && IsWindowVisible(item) ? Text(item) : "(hidden)";
}

/// Waits for the message window, reads it, and answers it.
Seen Operate(const Answer& answer) {
  HWND window = nullptr;
  for (int tries = 0; tries < 1000 && !(window && IsWindowVisible(window)); ++tries) {
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
    window = FindWindowW(L"" TARSUS_MESSAGE_CLASS, nullptr);
  }
  if (!window) return {};
  const Seen seen = {Text(window),
                     Shown(window, TARSUS_MESSAGE_TEXT),
                     Shown(window, TARSUS_MESSAGE_ID),
                     Shown(window, TARSUS_MESSAGE_CONSENT),
                     Shown(window, TARSUS_MESSAGE_REFUSE),
                     LOWORD(SendMessageW(window, DM_GETDEFID, 0, 0)),
                     GetWindow(window, GW_OWNER) != nullptr};
  answer(window);
  return seen;
}

using components::MessageDialog;

class Message : public HostTest {
 protected:
  std::int32_t Show(base::MessageId id, const Answer& answer, const std::vector<std::string>& texts = {"", "", ""}) {
    auto seen = std::async(std::launch::async, Operate, answer);
    const auto code = static_cast<std::int32_t>(dialog_->Show(id, texts[0], texts[1], texts[2]));
    seen_ = seen.get();
    return code;
  }

  const Answer consent_ = Press(TARSUS_MESSAGE_CONSENT), refuse_ = Press(TARSUS_MESSAGE_REFUSE);
  std::unique_ptr<host::MessageDialog> dialog_ = factory_.CreateMessageDialog();
  Seen seen_;
};

TEST_F(Message, ShowsTextWithInsertionsAndNumberAndMakesRefusalTheDefaultOfAWarning) {
  Show(AskInsertSourceMedium, refuse_);
  EXPECT_EQ(seen_.text, "Medium einlegen: 100 % leer, %4?");
  EXPECT_EQ(seen_.consent + seen_.refuse, "&Ja&Nein");
  EXPECT_EQ(seen_.id, "") << "the option is not set";
  EXPECT_EQ(seen_.defaultButton, TARSUS_MESSAGE_CONSENT);
  Show(AskUnprotected, refuse_);
  EXPECT_EQ(seen_.defaultButton, TARSUS_MESSAGE_REFUSE);
  dialog_->SetDisplayOptions(1, 1);
  Show(BackupSectionMissing, consent_, {"ä%2.ini", "C:\\&x", "drei"});
  EXPECT_EQ(seen_.text, "Die Datei ä%2.ini fehlt in C:\\&x (drei, ä%2.ini).");
  EXPECT_EQ(seen_.title, "Tarsus Mitteilung");
  EXPECT_EQ(seen_.id, "ID 60370");
  EXPECT_EQ(seen_.consent + seen_.refuse, "OK(hidden)");
}

TEST_F(Message, AnswersWithTheButtonsCode) {
  const Answer enter = Strike({VK_RETURN}), escape = Strike({VK_ESCAPE}), otherButton = Strike({VK_TAB, VK_RETURN});
  constexpr auto kConsent = MessageDialog::kConsent, kOk = MessageDialog::kOkOrRefusal, kRefusal = kOk;
  const std::tuple<base::MessageId, Answer, std::int32_t> cases[] = {
      {AskInsertSourceMedium, consent_, kConsent}, {AskInsertSourceMedium, refuse_, kRefusal},
      {AskInsertSourceMedium, CloseBox, kRefusal}, {AskInsertSourceMedium, enter, kConsent},
      {AskInsertSourceMedium, escape, kRefusal},   {AskInsertSourceMedium, otherButton, kRefusal},
      {AskUnprotected, enter, kRefusal},           {AskUnprotected, otherButton, kConsent},
      {BackupSectionMissing, CloseBox, kOk},       {BackupSectionMissing, enter, kOk},
      {BackupSectionMissing, escape, kOk}};
  for (std::size_t index = 0; index < std::size(cases); ++index) {
    const auto& [id, answer, code] = cases[index];
    EXPECT_EQ(Show(id, answer), code) << "case " << index;
  }
}

TEST_F(Message, SpeaksWithoutATextOrTheWholeCatalogue) {
  for (const std::int32_t id : {60999, 12345}) {
    EXPECT_EQ(Show(base::MessageId{id}, consent_), MessageDialog::kOkOrRefusal);
    EXPECT_EQ(seen_.text, std::to_string(id) + ": Not Defined!");
  }
  const Fault gone = Altered(kDatabase);
  EXPECT_EQ(Show(CatalogueNotOpened, consent_), MessageDialog::kOkOrRefusal);
  EXPECT_EQ(seen_.text, "The message catalogue could not be opened.");
  EXPECT_EQ(seen_.consent, "OK");
  Show(AskInsertSourceMedium, consent_);
  EXPECT_NE(seen_.text.find("64400"), std::string::npos);
  EXPECT_EQ(seen_.refuse, "(hidden)") << "what cannot be read cannot be consented to";
}

TEST_F(Message, BlocksTheCallersWindowWhenItIsToStayAboveIt) {
  const HWND caller = CreateWindowW(L"STATIC", L"caller", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 300, 200, nullptr,
                                    nullptr, nullptr, nullptr);
  Show(BackupSectionMissing, consent_);
  EXPECT_FALSE(seen_.owned);
  dialog_->SetDisplayOptions(1, 1);
  Show(BackupSectionMissing, consent_);
  EXPECT_TRUE(seen_.owned);
  EXPECT_TRUE(IsWindowEnabled(caller)) << "afterwards";
  DestroyWindow(caller);
}

}  // namespace
