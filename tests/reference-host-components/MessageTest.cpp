// The message window, answered by a second thread as an operator would.
#include <chrono>
#include <functional>
#include <future>
#include <set>
#include <sstream>
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

/// Where a control's text has left pixels when the control is drawn with this size: rows and columns from the top left.
std::set<std::pair<int, int>> Ink(HWND control, int width, int height) {
  BITMAPINFO info = {};
  info.bmiHeader.biSize = sizeof info.bmiHeader;
  info.bmiHeader.biWidth = width;
  info.bmiHeader.biHeight = -height;
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  void* bits = nullptr;
  const HDC context = CreateCompatibleDC(nullptr);
  const HBITMAP bitmap = CreateDIBSection(context, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
  const HGDIOBJ before = SelectObject(context, bitmap);
  SetWindowPos(control, nullptr, 0, 0, width, height, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOREDRAW);
  SendMessageW(control, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(context), PRF_CLIENT);
  GdiFlush();
  const auto* const pixels = static_cast<const std::uint32_t*>(bits);
  std::set<std::pair<int, int>> ink;
  for (int at = 0; at < width * height; ++at) {
    if (pixels[at] != pixels[width * height - 1]) ink.emplace(at / width, at % width);
  }
  SelectObject(context, before);
  DeleteObject(bitmap);
  DeleteDC(context);
  return ink;
}

/// Whether all of the message's text stands in the window: in a larger control nothing of it comes in addition.
void ExpectWholeText(HWND window) {
  const HWND text = GetDlgItem(window, TARSUS_MESSAGE_TEXT);
  RECT area = {};
  GetClientRect(text, &area);
  const int width = static_cast<int>(area.right), height = static_cast<int>(area.bottom);
  const auto shown = Ink(text, width, height);
  EXPECT_FALSE(shown.empty());
  EXPECT_TRUE(shown == Ink(text, width + 100, height + 100)) << Text(text);
  PostMessageW(window, WM_CLOSE, 0, 0);
}

TEST_F(Message, ShowsAllOfEveryTextOfTheDemonstration) {
  const std::string key = "SOFTWARE\\Orvantis\\TARSUS";
  RegSetKeyValueA(HKEY_LOCAL_MACHINE, key.c_str(), "Font", REG_SZ, "Tahoma", 7);
  for (const std::string table : {"MSG_ENGLISH", "MSG_GERMAN"}) {
    Query("UPDATE T_CONFIG SET VALUE = 'TABLE:" + table + "'");
    std::istringstream ids(Query("SELECT ID FROM " + table + " WHERE ID > 60000 AND ID < 66000"));
    int count = 0;
    for (std::string id; std::getline(ids, id, '|') && id != "\n"; ++count) {
      Show(base::MessageId{std::stoi(id)}, &ExpectWholeText, {"", "-1", "1234"});
    }
    EXPECT_GT(count, 80) << table;
  }
  Query("UPDATE T_CONFIG SET VALUE = 'TABLE:T_MESSAGE'");
  RegDeleteKeyValueA(HKEY_LOCAL_MACHINE, key.c_str(), "Font");
}

}  // namespace
