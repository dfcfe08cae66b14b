// Icons that are cut from bitmaps.
#include <windows.h>

#include "window/icons.h"
#include "window/pixels.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

namespace {

using cad_host::Pixels;

constexpr std::uint32_t kRed = 0xFFFF0000;
constexpr std::uint32_t kTransparent = 0;

/// The bytes of a bitmap file of two squares of two pixels: red, then the grey that means transparent.
std::string TwoSquares() {
  BITMAPFILEHEADER header{};
  BITMAPINFOHEADER info{};
  header.bfType = 0x4d42;
  header.bfOffBits = sizeof header + sizeof info;
  info.biSize = sizeof info;
  info.biWidth = 4;
  info.biHeight = 2;
  info.biPlanes = 1;
  info.biBitCount = 24;
  std::string bytes(header.bfOffBits, '\0');
  std::memcpy(bytes.data(), &header, sizeof header);
  std::memcpy(bytes.data() + sizeof header, &info, sizeof info);
  const std::string red("\x00\x00\xff", 3);
  const std::string grey = "\xc0\xc0\xc0";
  for (int row = 0; row < 2; ++row) bytes += red + red + grey + grey;
  return bytes;
}

TEST(IconsTest, TheGreyOfTheBitmapIsTransparent) {
  const Pixels pixels = cad_host::ReadBitmap(TwoSquares());
  ASSERT_EQ(pixels.width, 4);
  ASSERT_EQ(pixels.height, 2);
  EXPECT_EQ(pixels.At(0, 0), kRed);
  EXPECT_EQ(pixels.At(3, 1), kTransparent);
}

TEST(IconsTest, AreScaled) {
  const Pixels strip = cad_host::ReadBitmap(TwoSquares());
  constexpr int kSize = 3;
  const Pixels first = cad_host::CutSquare(strip, 0, 2, kSize);
  ASSERT_EQ(first.values.size(), 9u);
  for (const std::uint32_t pixel : first.values) EXPECT_EQ(pixel, kRed);
  const Pixels second = cad_host::CutSquare(strip, 2, 2, kSize);
  for (const std::uint32_t pixel : second.values) EXPECT_EQ(pixel, kTransparent);
}

TEST(IconsTest, GreyOnesHaveNoColour) {
  const Pixels grey = cad_host::Greyed({1, 1, {kRed}});
  const std::uint32_t pixel = grey.At(0, 0);
  EXPECT_EQ(pixel & 0xFF, (pixel >> 8) & 0xFF);
  EXPECT_EQ(pixel & 0xFF, (pixel >> 16) & 0xFF);
}

TEST(IconsTest, ABitmapThatIsCutOffHasNoPixels) {
  const std::string bytes = TwoSquares();
  EXPECT_TRUE(cad_host::ReadBitmap(bytes.substr(0, bytes.size() - 1)).values.empty());
  EXPECT_TRUE(cad_host::ReadBitmap("BM").values.empty());
}

TEST(IconsTest, AListThatIsNoBitmapAddsNone) {
  constexpr int kSize = 16;
  cad_host::IconSet icons = cad_host::DrawHostIcons(kSize);
  EXPECT_EQ(cad_host::AddIcons(icons, {}), -1);
  EXPECT_EQ(ImageList_GetImageCount(icons.normal.get()), cad_host::kHostIconCount);
  cad_host::IconList two;
  two.file = TwoSquares();
  EXPECT_EQ(cad_host::AddIcons(icons, two), cad_host::kHostIconCount);
  EXPECT_EQ(ImageList_GetImageCount(icons.grey.get()), cad_host::kHostIconCount + 2);
}

}  // namespace
