// Rewrites the host database's dialect into the demonstration database's, token by token.
#include <algorithm>
#include <array>
#include <cctype>
#include <span>
#include <string_view>

#include "common/Database.h"

namespace reference {

namespace {

enum class Kind { Word, Literal, Blank, Symbol };

struct Token {
  Kind kind;
  std::string_view text;
};

using Tokens = std::span<const Token>;

bool IsWordLetter(char letter) {
  const auto byte = static_cast<unsigned char>(letter);
  return std::isalnum(byte) || byte >= 0x80 || letter == '_' || letter == '@' || letter == '#' || letter == '$';
}

bool IsBlank(char letter) {
  return std::isspace(static_cast<unsigned char>(letter));
}

/// Length of a quoted run whose closing character counts as text when doubled. A run that is not
/// closed takes the rest, and the database will refuse it.
std::size_t QuotedLength(std::string_view text, char close) {
  std::size_t at = 1;
  while (at < text.size()) {
    if (text[at] != close) {
      ++at;
    } else if (at + 1 < text.size() && text[at + 1] == close) {
      at += 2;
    } else {
      return at + 1;
    }
  }
  return text.size();
}

template <typename Predicate>
std::size_t RunLength(std::string_view text, Predicate belongs) {
  return static_cast<std::size_t>(std::ranges::find_if_not(text, belongs) - text.begin());
}

/// Length of the text up to and including `end`, or of all of it.
std::size_t CommentLength(std::string_view text, std::string_view end) {
  const std::size_t at = text.find(end, 2);
  return at == std::string_view::npos ? text.size() : at + end.size();
}

Token NextToken(std::string_view text) {
  const char first = text.front();
  if (first == '\'') return {Kind::Literal, text.substr(0, QuotedLength(text, '\''))};
  if (first == '"') return {Kind::Word, text.substr(0, QuotedLength(text, '"'))};
  if (first == '[') return {Kind::Word, text.substr(0, QuotedLength(text, ']'))};
  if (text.starts_with("--")) return {Kind::Blank, text.substr(0, CommentLength(text, "\n"))};
  if (text.starts_with("/*")) return {Kind::Blank, text.substr(0, CommentLength(text, "*/"))};
  if (IsBlank(first)) return {Kind::Blank, text.substr(0, RunLength(text, IsBlank))};
  if (IsWordLetter(first)) return {Kind::Word, text.substr(0, RunLength(text, IsWordLetter))};
  return {Kind::Symbol, text.substr(0, 1)};
}

std::vector<Token> Tokenize(std::string_view text) {
  std::vector<Token> tokens;
  while (!text.empty()) {
    tokens.push_back(NextToken(text));
    text.remove_prefix(tokens.back().text.size());
  }
  return tokens;
}

bool IsWord(const Token& token, std::string_view upperCase) {
  return token.kind == Kind::Word && std::ranges::equal(token.text, upperCase, {}, [](char letter) {
           return static_cast<char>(std::toupper(static_cast<unsigned char>(letter)));
         });
}

bool IsSymbol(const Token& token, char symbol) {
  return token.kind == Kind::Symbol && token.text[0] == symbol;
}

Tokens Trim(Tokens tokens) {
  while (!tokens.empty() && tokens.front().kind == Kind::Blank) tokens = tokens.subspan(1);
  while (!tokens.empty() && tokens.back().kind == Kind::Blank) tokens = tokens.first(tokens.size() - 1);
  return tokens;
}

/// A function's arguments and the number of tokens from its name to its closing parenthesis.
struct Call {
  std::vector<Tokens> arguments;
  std::size_t length = 0;
};

/// Reads the call that begins at the name `tokens[0]`; its length is 0 when there is none.
Call ReadCall(Tokens tokens) {
  std::size_t open = 1;
  while (open < tokens.size() && tokens[open].kind == Kind::Blank) ++open;
  if (open == tokens.size() || !IsSymbol(tokens[open], '(')) return {};
  Call call;
  int depth = 0;
  std::size_t start = open + 1;
  for (std::size_t at = open; at < tokens.size(); ++at) {
    if (IsSymbol(tokens[at], '(')) ++depth;
    if (IsSymbol(tokens[at], ')')) --depth;
    if (depth > 1 || (depth == 1 && !IsSymbol(tokens[at], ','))) continue;
    call.arguments.push_back(Trim(tokens.subspan(start, at - start)));
    start = at + 1;
    if (depth > 0) continue;
    if (call.arguments.size() == 1 && call.arguments[0].empty()) call.arguments.clear();
    call.length = at + 1;
    return call;
  }
  return {};
}

std::string Rewrite(Tokens tokens);

/// "7", "-7" or "+7" without blanks; empty for anything else.
std::string IntegerText(Tokens tokens) {
  std::string text;
  for (const Token& token : tokens) {
    if (token.kind != Kind::Blank) text += token.text;
  }
  const std::size_t digits = text.starts_with('-') || text.starts_with('+') ? 1 : 0;
  const bool isInteger = text.size() > digits && text.find_first_not_of("0123456789", digits) == std::string::npos;
  return isInteger ? text : std::string();
}

std::string RewriteDateAdd(const std::vector<Tokens>& arguments) {
  const std::string days = IntegerText(arguments[1]);
  if (arguments[0].size() != 1 || !IsWord(arguments[0][0], "DAY") || days.empty()) return {};
  return "datetime(" + Rewrite(arguments[2]) + ",'" + days + " days')";
}

std::string RewriteRight(const std::vector<Tokens>& arguments) {
  const std::string text = Rewrite(arguments[0]);
  // substr() with a negative start would answer the whole text for a length of 0.
  return "substr(" + text + ",max(length(" + text + ")-(" + Rewrite(arguments[1]) + "),0)+1)";
}

/// The call in the database's own words; empty when it is none of the host dialect's.
std::string RewriteCall(const Token& name, const std::vector<Tokens>& arguments) {
  if (IsWord(name, "GETDATE") && arguments.empty()) return "datetime('now','localtime')";
  if (IsWord(name, "LEN") && arguments.size() == 1) return "length(" + Rewrite(arguments[0]) + ")";
  if (IsWord(name, "RIGHT") && arguments.size() == 2) return RewriteRight(arguments);
  if (IsWord(name, "DATEADD") && arguments.size() == 3) return RewriteDateAdd(arguments);
  return {};
}

/// Whether the tokens begin with ".dbo.".
bool BeginsWithOwner(Tokens tokens) {
  return tokens.size() >= 3 && IsSymbol(tokens[0], '.') && (IsWord(tokens[1], "DBO") || IsWord(tokens[1], "[DBO]")) &&
         IsSymbol(tokens[2], '.');
}

std::string Rewrite(Tokens tokens) {
  std::string result;
  while (!tokens.empty()) {
    const Token& token = tokens.front();
    std::size_t used = 1;
    if (IsWord(token, "N") && tokens.size() > 1 && tokens[1].kind == Kind::Literal) {
      tokens = tokens.subspan(1);
      continue;
    }
    const Call call = token.kind == Kind::Word ? ReadCall(tokens) : Call{};
    const std::string rewritten = call.length > 0 ? RewriteCall(token, call.arguments) : std::string();
    if (!rewritten.empty()) {
      result += rewritten;
      used = call.length;
    } else {
      result += token.text;
      if (token.kind == Kind::Word && BeginsWithOwner(tokens.subspan(1))) {
        result += '.';
        used = 4;
      }
    }
    tokens = tokens.subspan(used);
  }
  return result;
}

}  // namespace

std::string RewriteHostDialect(const std::string& statement) {
  const std::vector<Token> tokens = Tokenize(statement);
  return Rewrite(tokens);
}

}  // namespace reference
