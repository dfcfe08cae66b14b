// The resources of the DLL: texts, version, icons.
#include <gtest/gtest.h>

#include <windows.h>

#include <cstring>
#include <set>
#include <string>
#include <vector>

#include "CStringHelper.h"
#include "add_in_dll.h"
#include "linked_module.h"
#include "module/module_state.h"
#include "module/string_table.h"
#include "user_language.h"

namespace {

constexpr LANGID kEnglish = 0x0809;
constexpr LANGID kSimplified = 0x0804;
constexpr LANGID kTraditional = 0x0404;

// The numbers by which the add-in, the registrar and the system find the resources.
constexpr unsigned kStrip = 254;
constexpr unsigned kMonochromeStrip = 255;
constexpr unsigned kAddInScript = 101;
constexpr unsigned kBitmapHandlerScript = 111;
constexpr unsigned kTypeLibrary = 1;

struct Text {
  unsigned id;
  const wchar_t* english;
  const wchar_t* simplified;
  const wchar_t* traditional;
};

const Text kTexts[] = {
    {1, L"Whether to extract the current drawing attribute information to populate the page?",
     L"是否提取当前图纸属性信息填充至页面中?", L"是否提取當前圖紙屬性信息填充至頁面中?"},
    {2, L"Extract properties", L"提取属性", L"提取屬性"},
    {3, L"Whether to backfill the created material property information into the drawing?",
     L"是否将创建的物料属性信息反填至图纸中？", L"是否將創建的物料屬性信息反填至圖紙中？"},
    {4, L"Backfill Properties", L"反填属性", L"反填屬性"},
    {6, L"Backfill Properties Completed", L"属性反填完成", L"屬性反填完成"},
    {7, L"Load Model", L"加载模型", L"加載模型"},
    {8, L"No model is currently loaded, please load a valid model and try again.",
     L"当前未加载模型，请加载有效模型后再试", L"當前未加載模型，請加載有效模型後再試"},
    {9, L"The selected object is not a SolidWorks type drawing. Please re-select.",
     L"选中对象不是SolidWorks类型图纸，请重新选择", L"選中對象不是SolidWorks類型圖紙，請重新選擇"},
    {10, L"Model replacement failed.", L"模型替换失败", L"模型替換失敗"},
    {11, L"The Current Model does not Support Replacement", L"当前模型不支持替换", L"當前模型不支持替換"},
    {133, L"PlmLogin failed", L"", L""},
    {265, L"File is opening!", L"文件正在打开！", L"文件正在打開!"},
    {266, L"The PLM client did not answer.", L"PLM 客户端没有应答。", L"PLM 用戶端沒有回應。"},
    {300, L"Error code:", L"错误代码:", L"錯誤代碼:"},
    {301, L"Log folder:", L"日志文件夹:", L"日誌資料夾:"},
    {57344, L"Collaborative management", L"协同管理", L"協同管理"},
};

class StringTable : public testing::Test {
 protected:
  LinkedModule m_module;
  ModuleState m_state;
};

std::vector<BYTE> Resource(HINSTANCE module, unsigned id, LPCWSTR type) {
  HRSRC resource = FindResourceW(module, MAKEINTRESOURCEW(id), type);
  if (!resource) return {};
  const auto* bytes = static_cast<const BYTE*>(LockResource(LoadResource(module, resource)));
  return std::vector<BYTE>(bytes, bytes + SizeofResource(module, resource));
}

std::wstring VersionText(const std::vector<BYTE>& version, const std::wstring& name) {
  void* text = nullptr;
  UINT length = 0;
  VerQueryValueW(version.data(), (L"\\StringFileInfo\\080904B0\\" + name).c_str(), &text, &length);
  return text ? static_cast<const wchar_t*>(text) : L"";
}

}  // namespace

TEST_F(StringTable, HasEveryTextInThreeLanguages) {
  for (const Text& text : kTexts) {
    SCOPED_TRACE(text.id);
    EXPECT_EQ(LoadResourceString(text.id, kEnglish), text.english);
    EXPECT_EQ(LoadResourceString(text.id, kSimplified), text.simplified);
    EXPECT_EQ(LoadResourceString(text.id, kTraditional), text.traditional);
  }
}

TEST_F(StringTable, ReturnsTextsInTheUsersLanguage) {
  for (const Text& text : kTexts) {
    SCOPED_TRACE(text.id);
    {
      const UserLanguage american(0x0409);
      EXPECT_EQ(LoadResourceString(text.id), text.english);
    }
    const bool english_only = *text.simplified == 0;
    {
      const UserLanguage chinese(kSimplified);
      EXPECT_EQ(LoadResourceString(text.id), english_only ? text.english : text.simplified);
    }
    {
      const UserLanguage taiwanese(kTraditional);
      EXPECT_EQ(LoadResourceString(text.id), english_only ? text.english : text.traditional);
    }
  }
}

TEST_F(StringTable, ReturnsTheEmptyStringForAMissingId) {
  for (const unsigned id : {0u, 5u, 12u, 132u, 134u, 264u, 1000u, 57345u, 65535u}) {
    EXPECT_EQ(LoadResourceString(id), L"") << id;
    EXPECT_EQ(LoadResourceString(id, kSimplified), L"") << id;
  }
}

TEST_F(StringTable, HasNoTextsInOtherLanguages) { EXPECT_EQ(LoadResourceString(1, 0x0407), L""); }

TEST(StringTableLanguage, FollowsTheUserInterfaceLanguage) {
  const struct {
    LANGID user, table;
  } cases[] = {
      {0x0409, kEnglish},      // English (United States)
      {0x0809, kEnglish},      // English (United Kingdom)
      {0x0407, kEnglish},      // German
      {0x0411, kEnglish},      // Japanese
      {0x0000, kEnglish},      // no language
      {0x0804, kSimplified},   // Chinese (China)
      {0x1004, kSimplified},   // Chinese (Singapore)
      {0x0004, kSimplified},   // Chinese (simplified), no region
      {0x7804, kSimplified},   // Chinese, neither script nor region
      {0x0404, kTraditional},  // Chinese (Taiwan)
      {0x0C04, kTraditional},  // Chinese (Hong Kong)
      {0x1404, kTraditional},  // Chinese (Macao)
      {0x7C04, kTraditional},  // Chinese (traditional), no region
  };
  for (const auto& c : cases) EXPECT_EQ(StringTableLanguage(c.user), c.table) << std::hex << c.user;
}

TEST(VersionResource, HasTheVersionOfTheProject) {
  const std::wstring path = AddInDll::BuiltPath();
  std::vector<BYTE> version(GetFileVersionInfoSizeW(path.c_str(), nullptr));
  ASSERT_FALSE(version.empty());
  ASSERT_TRUE(GetFileVersionInfoW(path.c_str(), 0, static_cast<DWORD>(version.size()), version.data()));

  const std::wstring expected = CStringHelper::UTF8ToUnicode(PRODUCT_VERSION);
  EXPECT_EQ(VersionText(version, L"FileVersion"), expected);
  EXPECT_EQ(VersionText(version, L"ProductVersion"), expected);
  EXPECT_EQ(VersionText(version, L"FileDescription"), L"TAVO SolidWorks Integration");
  EXPECT_EQ(VersionText(version, L"OriginalFilename"), L"solidworks_add_in.dll");

  VS_FIXEDFILEINFO* fixed = nullptr;
  UINT length = 0;
  ASSERT_TRUE(VerQueryValueW(version.data(), L"\\", reinterpret_cast<void**>(&fixed), &length));
  const std::wstring numbers = std::to_wstring(HIWORD(fixed->dwFileVersionMS)) + L"." +
                               std::to_wstring(LOWORD(fixed->dwFileVersionMS)) + L"." +
                               std::to_wstring(HIWORD(fixed->dwFileVersionLS));
  EXPECT_EQ(numbers, expected);
  EXPECT_EQ(fixed->dwProductVersionMS, fixed->dwFileVersionMS);
  EXPECT_EQ(fixed->dwFileType, static_cast<DWORD>(VFT_DLL));
}

TEST(RegistrationScripts, AreTheResourcesOfTheirClasses) {
  const AddInDll dll;
  const auto script = [&](unsigned id) {
    const std::vector<BYTE> bytes = Resource(dll.Handle(), id, L"REGISTRY");
    return std::string(bytes.begin(), bytes.end());
  };
  EXPECT_NE(script(kAddInScript).find("solidworks_add_in.SwAddin.1"), std::string::npos);
  EXPECT_NE(script(kBitmapHandlerScript).find("solidworks_add_in.BitmapHandler.1"), std::string::npos);
}

TEST(TypeLibraryResource, IsTheFirst) {
  const AddInDll dll;
  EXPECT_FALSE(Resource(dll.Handle(), kTypeLibrary, L"TYPELIB").empty());
}

TEST(IconStrips, HoldSixteenDifferentIconsEach) {
  const AddInDll dll;
  for (const unsigned id : {kStrip, kMonochromeStrip}) {
    SCOPED_TRACE(id);
    const std::vector<BYTE> bitmap = Resource(dll.Handle(), id, RT_BITMAP);
    BITMAPINFOHEADER info;
    ASSERT_EQ(bitmap.size(), sizeof info + 512 * 32 * 3);
    std::memcpy(&info, bitmap.data(), sizeof info);
    EXPECT_EQ(info.biWidth, 512);
    EXPECT_EQ(info.biHeight, 32);
    EXPECT_EQ(info.biBitCount, 24);
    std::set<std::vector<BYTE>> icons;
    for (int icon = 0; icon < 16; ++icon) {
      std::vector<BYTE> pixels;
      for (int row = 0; row < 32; ++row) {
        const BYTE* start = bitmap.data() + sizeof info + (row * 512 + icon * 32) * 3;
        pixels.insert(pixels.end(), start, start + 32 * 3);
      }
      icons.insert(std::move(pixels));
    }
    EXPECT_EQ(icons.size(), 16u);
  }
}

TEST(IconStrips, HaveTheTransparentColourInTheirCorners) {
  const AddInDll dll;
  const std::vector<BYTE> bitmap = Resource(dll.Handle(), kStrip, RT_BITMAP);
  ASSERT_GT(bitmap.size(), sizeof(BITMAPINFOHEADER));
  for (int icon = 0; icon < 16; ++icon) {
    const BYTE* corner = bitmap.data() + sizeof(BITMAPINFOHEADER) + icon * 32 * 3;
    EXPECT_EQ(std::vector<BYTE>(corner, corner + 3), (std::vector<BYTE>{192, 192, 192})) << icon;
  }
}
