#include "vault/records.h"

namespace plm_vault {
namespace {

constexpr int kLetters = 26;
constexpr std::size_t kLongestLabel = 4;

}  // namespace

std::wstring RevisionLabel(int revision) {
  std::wstring label;
  for (int rest = revision; rest > 0; rest = (rest - 1) / kLetters) {
    label.insert(label.begin(), static_cast<wchar_t>(L'A' + (rest - 1) % kLetters));
  }
  return label;
}

int RevisionOfLabel(std::wstring_view label) {
  if (label.size() > kLongestLabel) return 0;
  int revision = 0;
  for (const wchar_t letter : label) {
    const int upper = letter >= L'a' && letter <= L'z' ? letter - L'a' + L'A' : letter;
    if (upper < L'A' || upper > L'Z') return 0;
    revision = revision * kLetters + (upper - L'A' + 1);
  }
  return revision;
}

}  // namespace plm_vault
