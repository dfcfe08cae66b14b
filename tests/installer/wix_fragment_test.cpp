// Registration scripts as a part of a package's source.
#include "wix_fragment.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace {

using registry_entries::WixFragment;

std::string FragmentOf(const std::wstring& script) { return WixFragment(registry_script::Parse(script, {})); }

bool Contains(const std::string& text, const std::string& part) { return text.find(part) != text.npos; }

/// The part of a fragment that is the component `id`.
std::string Component(const std::string& fragment, const std::string& id) {
  const std::size_t start = fragment.find("<Component Id=\"" + id + "\"");
  return fragment.substr(start, fragment.find("</Component>", start) - start);
}

/// The message with which `script` is refused.
std::string Refusal(const std::wstring& script) {
  try {
    FragmentOf(script);
    return "(accepted)";
  } catch (const std::runtime_error& error) {
    return error.what();
  }
}

const std::wstring kFlag = L"HKLM { Host { NoRemove AddIns { Ours = d '0' } } }";

TEST(WixFragment, WritesTheClassesOfTheComputer) {
  EXPECT_TRUE(Contains(FragmentOf(L"HKCR { Name { Sub = s 'text' } } " + kFlag),
                       "<RegistryValue Root=\"HKLM\" Key=\"SOFTWARE\\Classes\\Name\\Sub\" Type=\"string\" "
                       "Value=\"text\" KeyPath=\"yes\"/>"));
}

TEST(WixFragment, WritesNamedValues) {
  EXPECT_TRUE(Contains(FragmentOf(L"HKLM { Key { val A = s '1' val B = s '2' } } " + kFlag),
                       "<RegistryValue Root=\"HKLM\" Key=\"Key\" Name=\"B\" Type=\"string\" Value=\"2\"/>"));
}

TEST(WixFragment, RemovesAKeyWithItsContentsOnlyIfItIsMarked) {
  const std::string fragment =
      FragmentOf(L"HKCR { NoRemove A { ForceRemove B = s '1' } C = s '2' } " + kFlag);
  EXPECT_TRUE(Contains(fragment, "Key=\"SOFTWARE\\Classes\\A\\B\" Name=\"-\""));
  EXPECT_FALSE(Contains(fragment, "Key=\"SOFTWARE\\Classes\\A\" Name=\"-\""));
  EXPECT_FALSE(Contains(fragment, "Key=\"SOFTWARE\\Classes\\C\" Name=\"-\""));
}

TEST(WixFragment, MakesAnEmptyKeyThatIsMarked) {
  EXPECT_TRUE(Contains(FragmentOf(L"HKCR { ForceRemove Empty } " + kFlag),
                       "Key=\"SOFTWARE\\Classes\\Empty\" Name=\"*\" Type=\"string\" Value=\"\""));
}

TEST(WixFragment, RefusesAnEmptyKeyThatWouldStay) {
  EXPECT_EQ(Refusal(L"HKCR { Empty } " + kFlag),
            "the empty key is not marked ForceRemove: SOFTWARE\\Classes\\Empty");
}

TEST(WixFragment, MakesTheHostsNumberAChoice) {
  const std::string fragment = FragmentOf(L"HKCR { A = s 'a' } " + kFlag);
  const std::string entry = "<RegistryValue Root=\"HKLM\" Key=\"Host\\AddIns\\Ours\" Type=\"integer\" Value=";
  EXPECT_FALSE(Contains(Component(fragment, "Registration"), "Ours"));
  EXPECT_TRUE(Contains(Component(fragment, "LoadOnDemand"), entry + "\"0\" KeyPath=\"yes\"/>"));
  EXPECT_TRUE(Contains(Component(fragment, "LoadAtStartup"), entry + "\"1\" KeyPath=\"yes\"/>"));
  EXPECT_TRUE(
      Contains(fragment, "<RegistrySearch Id=\"LoadedAtStartup\" Root=\"HKLM\" Key=\"Host\\AddIns\\Ours\""));
}

TEST(WixFragment, NeedsExactlyOneNumber) {
  EXPECT_EQ(Refusal(L"HKCR { A = s 'a' }"),
            "no number among the entries: which one is the host's start-up flag?");
  EXPECT_EQ(Refusal(kFlag + L" HKLM { Other { val N = d '2' } }"), "a second number: Other");
}

TEST(WixFragment, WritesSignsOfXmlAsText) {
  EXPECT_TRUE(
      Contains(FragmentOf(L"HKCR { A = s '<&\">\u8bbe' } " + kFlag), "Value=\"&lt;&amp;&quot;&gt;\u8bbe\""));
}

TEST(WixFragment, HasOneKeyPath) {
  const std::string component =
      Component(FragmentOf(L"HKCR { A = s 'a' B = s 'b' } " + kFlag), "Registration");
  EXPECT_EQ(component.find("KeyPath"), component.rfind("KeyPath"));
}

}  // namespace
