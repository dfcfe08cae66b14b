#include "sensitive_name.h"

#include <algorithm>
#include <string>

namespace doctor {
namespace {

/// Names that contain one of these are sensitive. In lower case, without `_`, `-` and `.`.
constexpr std::string_view kParts[] = {
    "password", "passwd",    "passphrase", "passcode",    "pwd",    "secret",    "token",      "credential",
    "auth",     "cookie",    "user",       "account",     "apikey", "accesskey", "privatekey", "sessionid",
    "ticket",   "loginname", "loginid",    "loginresult", "email",  "密码",      "密碼",       "口令",
    "令牌",     "用户",      "用戶",       "账号",        "帳號",   "账户",      "帳戶",
};

/// Names that are sensitive as a whole.
constexpr std::string_view kWhole[] = {"pass", "pw", "pin", "uid", "login", "session"};

constexpr std::string_view kSecondWords[] = {"name", "id", "key", "code", "number"};

char LowerCase(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c | 0x20) : c; }

}  // namespace

bool IsNameCharacter(char c) {
  return (c >= '0' && c <= '9') || (LowerCase(c) >= 'a' && LowerCase(c) <= 'z') || c == '_' || c == '-' ||
         c == '.' || static_cast<unsigned char>(c) >= 0x80;
}

bool EqualButForCase(std::string_view text, std::string_view lower) {
  return std::ranges::equal(text, lower, {}, LowerCase);
}

bool EndsTwoWords(std::string_view word) {
  return std::ranges::any_of(kSecondWords,
                             [word](std::string_view second) { return EqualButForCase(word, second); });
}

bool IsSensitiveName(std::string_view name) {
  std::string plain;
  for (const char c : name) {
    if (c != '_' && c != '-' && c != '.') plain += LowerCase(c);
  }
  return std::ranges::any_of(kParts,
                             [&](std::string_view part) { return plain.find(part) != std::string::npos; }) ||
         std::ranges::find(kWhole, plain) != std::end(kWhole);
}

}  // namespace doctor
