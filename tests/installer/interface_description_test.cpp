// What registration needs from an interface description.
#include "interface_description.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace {

using registry_entries::InterfaceDescription;
using registry_entries::ReadInterfaceDescription;

const std::string kApplication =
    "cpp_quote(\"DEFINE_GUID(APPID_X, 0x75c3a99f, 0xc42c, 0x4b4a, 0xa5, 0x7e, 0xa1, 0x2b, 0x7d, 0xc6, 0x23, "
    "0x06);\")\n";
const std::string kLibrary =
    "[ uuid(EA77B297-A3D1-4C82-BF87-2CA5AADE9530), version(1.0), helpstring(\"x 1.0 Type Library\") ]\n"
    "library XLib\n{\n";

/// The message with which `idl` is refused.
std::string Refusal(const std::string& idl) {
  try {
    ReadInterfaceDescription(idl);
    return "(accepted)";
  } catch (const std::runtime_error& error) {
    return error.what();
  }
}

TEST(InterfaceDescription, HasTheApplicationIdAsTheRegistryWritesIt) {
  EXPECT_EQ(ReadInterfaceDescription(kApplication + kLibrary + "}").application_id,
            L"{75C3A99F-C42C-4B4A-A57E-A12B7DC62306}");
}

TEST(InterfaceDescription, HasTheLibrary) {
  const InterfaceDescription description = ReadInterfaceDescription(kApplication + kLibrary + "}");
  EXPECT_EQ(description.type_library.id, L"{EA77B297-A3D1-4C82-BF87-2CA5AADE9530}");
  EXPECT_EQ(description.type_library.name, L"x 1.0 Type Library");
  EXPECT_EQ(description.type_library.version, L"1.0");
}

TEST(InterfaceDescription, HasTheInterfacesForAutomationOnly) {
  const InterfaceDescription description = ReadInterfaceDescription(
      kApplication +
      "[ object, uuid(b726e794-32bb-4d6d-a6bf-648845871b2e), dual, helpstring(\"IOne Interface\") ]\n"
      "interface IOne : IDispatch { [id(1), helpstring(\"method A\")] HRESULT A([in] long a); };\n"
      "[ object, uuid(00000000-32BB-4D6D-A6BF-648845871B2E) ] interface IOther : IUnknown {};\n" +
      kLibrary + "}");
  ASSERT_EQ(description.interfaces.size(), 1u);
  EXPECT_EQ(description.interfaces[0].name, L"IOne");
  EXPECT_EQ(description.interfaces[0].id, L"{B726E794-32BB-4D6D-A6BF-648845871B2E}");
}

TEST(InterfaceDescription, HasTheClassesByName) {
  const InterfaceDescription description = ReadInterfaceDescription(
      kApplication + kLibrary +
      "[uuid(555D9E80-10EC-45A2-9712-D43E5E66F163), helpstring(\"One Class\")] coclass One\n"
      "{ [default] interface IOne; };\n}");
  EXPECT_EQ(description.classes,
            (std::map<std::wstring, std::wstring>{{L"One", L"{555D9E80-10EC-45A2-9712-D43E5E66F163}"}}));
  EXPECT_TRUE(description.interfaces.empty());
}

TEST(InterfaceDescription, IsNotReadFromComments) {
  const InterfaceDescription description = ReadInterfaceDescription(
      kApplication + kLibrary + "// [uuid(555D9E80-10EC-45A2-9712-D43E5E66F163)] coclass Old\n}");
  EXPECT_TRUE(description.classes.empty());
}

TEST(InterfaceDescription, NamesWhatIsMissing) {
  EXPECT_EQ(Refusal(kLibrary + "}"), "no DEFINE_GUID for the application id");
  EXPECT_EQ(Refusal("DEFINE_GUID(APPID_X, 0x75c3a99f, 0xc42c)"),
            "DEFINE_GUID takes 11 numbers:  0x75c3a99f, 0xc42c");
  EXPECT_EQ(Refusal(kApplication), "no library with a uuid");
  EXPECT_EQ(Refusal(kApplication + "[uuid(1), version(1.0)] library X {}"), "the library has no helpstring");
  EXPECT_EQ(Refusal(kApplication + "[uuid(1), helpstring(\"x\")] library X {}"),
            "the library has no version");
}

}  // namespace
