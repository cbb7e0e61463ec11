#include "components/LogWriter.h"

#include <windows.h>

#include "components/FileHandle.h"
#include "windows/adapters/Text.h"

namespace components {

LogWriter::LogWriter() {
  AddProperty(L"FilePath", &LogWriter::SetFilePath);
  AddProperty(L"Mode", &LogWriter::SetMode);
  AddMethod(L"WriteLine", &LogWriter::WriteLine);
}

std::int32_t LogWriter::WriteLine(const std::string& line) {
  const DWORD disposition = append_ ? OPEN_ALWAYS : CREATE_ALWAYS;
  const FileHandle file(CreateFileW(windows::Utf16(path_).c_str(), FILE_APPEND_DATA,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, disposition,
                                    FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file) return -1;
  append_ = true;
  // One write for the whole line: lines of several writers then never mix.
  const std::string bytes = windows::ToCodePageStrictly(line) + "\r\n";
  DWORD written = 0;
  const bool done = WriteFile(file.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
  return done && written == bytes.size() ? 0 : -1;
}

}  // namespace components
