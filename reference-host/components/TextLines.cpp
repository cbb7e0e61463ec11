#include "components/TextLines.h"

#include <windows.h>

#include "windows/adapters/Text.h"

namespace components {
namespace {

constexpr std::string_view kUtf16Mark = "\xFF\xFE";

bool IsUtf8(std::string_view bytes) {
  return bytes.empty() ||
         MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, bytes.data(), static_cast<int>(bytes.size()), nullptr, 0);
}

// Takes the first line with its line end off `text`.
template <typename Text>
Text TakeLine(Text& text, typename Text::value_type lineEnd) {
  const std::size_t end = text.find(lineEnd);
  const Text line = text.substr(0, end == Text::npos ? end : end + 1);
  text.remove_prefix(line.size());
  return line;
}

std::string FilterUtf16(std::string_view bytes, const std::function<bool(std::wstring_view)>& isUnwanted) {
  std::wstring wide(bytes.size() / sizeof(wchar_t), L'\0');
  bytes.copy(reinterpret_cast<char*>(wide.data()), wide.size() * sizeof(wchar_t));
  std::string kept;
  for (std::wstring_view rest = wide; !rest.empty();) {
    const std::wstring_view line = TakeLine(rest, L'\n');
    if (isUnwanted(line)) continue;
    kept.append(reinterpret_cast<const char*>(line.data()), line.size() * sizeof(wchar_t));
  }
  return kept;
}

}  // namespace

std::optional<std::string> WithoutLines(std::string_view bytes,
                                        const std::function<bool(std::wstring_view line)>& isUnwanted) {
  if (bytes.starts_with(kUtf16Mark)) {
    bytes.remove_prefix(kUtf16Mark.size());
    return std::string(kUtf16Mark) + FilterUtf16(bytes, isUnwanted);
  }
  if (bytes.find('\0') != std::string_view::npos) return std::nullopt;
  const bool utf8 = IsUtf8(bytes);
  std::string kept;
  while (!bytes.empty()) {
    const std::string_view line = TakeLine(bytes, '\n');
    if (!isUnwanted(windows::Utf16(utf8 ? std::string(line) : windows::FromCodePage(line)))) kept += line;
  }
  return kept;
}

}  // namespace components
