// Every kept input of the fuzz targets: those that a search begins with, and those that broke something once.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "targets.h"

namespace fuzz {
namespace {

namespace fs = std::filesystem;

struct Input {
  const Target* target;
  fs::path file;
};

void PrintTo(const Input& input, std::ostream* stream) { *stream << input.file; }

const Target* FindTarget(const std::string& name) {
  const auto* const found =
      std::ranges::find_if(kTargets, [&](const Target& target) { return name == target.name; });
  return found == std::end(kTargets) ? nullptr : found;
}

/// The folders of targets in seeds/ and crashes/.
std::vector<fs::path> Folders() {
  std::vector<fs::path> folders;
  for (const char* const kind : {"seeds", "crashes"}) {
    for (const auto& entry : fs::directory_iterator(fs::path(FUZZ_FOLDER) / kind)) {
      if (entry.is_directory()) folders.push_back(entry.path());
    }
  }
  return folders;
}

std::vector<Input> KeptInputs() {
  std::vector<Input> inputs;
  for (const fs::path& folder : Folders()) {
    const Target* const target = FindTarget(folder.filename());
    if (!target) continue;
    for (const auto& entry : fs::directory_iterator(folder)) inputs.push_back({target, entry.path()});
  }
  std::ranges::sort(inputs, {}, &Input::file);
  return inputs;
}

std::string NameOf(const testing::TestParamInfo<Input>& info) {
  const fs::path& file = info.param.file;
  std::string name = file.parent_path().parent_path().filename().string() + "_" + info.param.target->name +
                     "_" + file.filename().string();
  std::ranges::replace_if(
      name, [](unsigned char c) { return std::isalnum(c) == 0; }, '_');
  return name;
}

class KeptInput : public testing::TestWithParam<Input> {};

TEST_P(KeptInput, BreaksNothing) {
  std::ifstream file(GetParam().file, std::ios::binary);
  ASSERT_TRUE(file);
  // Not in a string: its null behind the last character would hide a read beyond the end.
  const std::vector<char> bytes{std::istreambuf_iterator<char>(file), {}};
  EXPECT_NO_THROW(GetParam().target->run({bytes.data(), bytes.size()}));
}

INSTANTIATE_TEST_SUITE_P(, KeptInput, testing::ValuesIn(KeptInputs()), NameOf);

TEST(KeptInputs, BelongToATarget) {
  for (const fs::path& folder : Folders()) EXPECT_TRUE(FindTarget(folder.filename())) << folder;
}

TEST(KeptInputs, EveryTargetHasSeeds) {
  for (const Target& target : kTargets) {
    const fs::path folder = fs::path(FUZZ_FOLDER) / "seeds" / target.name;
    EXPECT_TRUE(fs::is_directory(folder) && !fs::is_empty(folder)) << folder;
  }
}

}  // namespace
}  // namespace fuzz
