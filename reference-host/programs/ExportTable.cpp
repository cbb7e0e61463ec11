// Writes a table of one of the host's databases as text: a line of column names, then a line
// per row, fields separated by tabs, in UTF-8.
//
//   ExportTable ENTRY TABLE FILE [WITHHELD-COLUMN...]
//
// ENTRY is the database's name in the path table, such as StudyDB. TABLE is whatever may stand
// behind FROM in the host's SQL dialect. The fields of withheld columns are left empty; a
// withheld column that the table does not have is a failure, because what it was to hide could
// then stand under another name. Exit code 0, 1 on a failure, 2 for a wrong call.

#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <string>
#include <vector>

#include "common/Database.h"
#include "windows/adapters/Text.h"

namespace {

using reference::Rows;

// A field must not look like two, nor a row like two.
std::string Field(std::string text) {
  std::replace_if(
      text.begin(), text.end(), [](char c) { return c == '\t' || c == '\r' || c == '\n'; }, ' ');
  return text;
}

std::string Line(const std::vector<std::string>& fields) {
  std::string line;
  for (std::size_t field = 0; field < fields.size(); ++field) {
    if (field) line += '\t';
    line += Field(fields[field]);
  }
  return line + "\r\n";
}

bool HasAll(const Rows& rows, const std::vector<std::string>& columns) {
  return std::all_of(columns.begin(), columns.end(), [&](const std::string& column) {
    return std::count(rows.columns.begin(), rows.columns.end(), column) != 0;
  });
}

std::string AsText(const Rows& rows, const std::vector<std::string>& withheld) {
  std::string text = Line(rows.columns);
  for (const auto& row : rows.cells) {
    std::vector<std::string> fields;
    for (std::size_t column = 0; column < row.size(); ++column) {
      const bool isWithheld = std::count(withheld.begin(), withheld.end(), rows.columns[column]) != 0;
      fields.push_back(isWithheld ? std::string() : row[column].value_or(""));
    }
    text += Line(fields);
  }
  return text;
}

int Fail(const std::string& reason) {
  std::fprintf(stderr, "ExportTable: %s\n", reason.c_str());
  return 1;
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
  if (count < 4) {
    std::fprintf(stderr, "usage: ExportTable ENTRY TABLE FILE [WITHHELD-COLUMN...]\n");
    return 2;
  }
  std::vector<std::string> withheld;
  for (int index = 4; index < count; ++index) withheld.push_back(windows::Utf8(arguments[index]));
  const auto database = reference::Database::OpenEntry(windows::Utf8(arguments[1]));
  if (!database) return Fail("the database cannot be opened");
  std::string error;
  const auto rows =
      database->Run(reference::RewriteHostDialect("SELECT * FROM " + windows::Utf8(arguments[2])), &error);
  if (!rows) return Fail(error);
  if (!HasAll(*rows, withheld)) return Fail("the table has no such column to withhold");
  std::ofstream file(arguments[3], std::ios::binary);
  file << AsText(*rows, withheld);
  return file.flush() ? 0 : Fail("the file cannot be written");
}
