#include <gtest/gtest.h>

#include "Graphics.h"
#include "TestSupport.h"

namespace orv {
namespace {

using testing::MessageOf;

TEST(ColorNames, NamesAndNumbersRoundTrip) {
  std::vector<String> names;
  GetColorValues([&](const String& name) { names.push_back(name); });
  ASSERT_EQ(names.size(), 52u);
  for (const String& name : names) EXPECT_EQ(ColorToString(StringToColor(name)), name);

  EXPECT_EQ(ColorToString(clRed), "clRed");
  EXPECT_EQ(ColorToString(clLtGray), "clSilver");  // an alias is named by the first entry
  EXPECT_EQ(ColorToString(clBtnFace), "clBtnFace");
  EXPECT_EQ(ColorToString(TColor(0x123456)), "$00123456");
  EXPECT_EQ(ColorToString(TColor(0xABCDEF)), "$00ABCDEF");
  EXPECT_EQ(ColorToString(SystemColor(25)), "$FF000019");  // a system index without a name

  EXPECT_EQ(StringToColor("CLWINDOWTEXT"), clWindowText);
  EXPECT_EQ(StringToColor("$00ABCDEF"), TColor(0xABCDEF));
  EXPECT_EQ(StringToColor("$FF000019"), SystemColor(25));
  EXPECT_EQ(StringToColor("0x0000FF"), clRed);
  EXPECT_EQ(StringToColor(" 255 "), clRed);
  EXPECT_EQ(StringToColor("-16777201"), clBtnFace);
  EXPECT_EQ(MessageOf<EConvertError>([] { StringToColor("clRedd"); }),
            "'clRedd' is not a valid integer value");
  EXPECT_EQ(MessageOf<EConvertError>([] { StringToColor(""); }), "'' is not a valid integer value");

  int32_t color = 7;
  EXPECT_FALSE(IdentToColor("Red", color));
  EXPECT_EQ(color, 7);
  String ident = "unchanged";
  EXPECT_FALSE(ColorToIdent(0x123456, ident));
  EXPECT_EQ(ident, "unchanged");
}

TEST(CharsetNames, IdentifiersBothWays) {
  std::vector<String> names;
  GetCharsetValues([&](const String& name) { names.push_back(name); });
  ASSERT_EQ(names.size(), 19u);
  for (const String& name : names) {
    int32_t charset = -1;
    String back;
    ASSERT_TRUE(IdentToCharset(name, charset)) << name;
    ASSERT_TRUE(CharsetToIdent(charset, back));
    EXPECT_EQ(back, name);
  }
  String ident;
  EXPECT_TRUE(CharsetToIdent(ANSI_CHARSET, ident));
  EXPECT_EQ(ident, "ANSI_CHARSET");
  EXPECT_TRUE(CharsetToIdent(204, ident));
  EXPECT_EQ(ident, "RUSSIAN_CHARSET");
  EXPECT_TRUE(CharsetToIdent(HANGUL_CHARSET, ident));
  EXPECT_EQ(ident, "HANGEUL_CHARSET");
  EXPECT_FALSE(CharsetToIdent(3, ident));
  EXPECT_EQ(ident, "HANGEUL_CHARSET");

  int32_t charset = -1;
  EXPECT_TRUE(IdentToCharset("oem_charset", charset));
  EXPECT_EQ(charset, 255);
  EXPECT_FALSE(IdentToCharset("RUSSIAN", charset));
  EXPECT_FALSE(IdentToCharset("204", charset));
  EXPECT_EQ(charset, 255);
}

TEST(Font, PublishedDefaultsSizeAndChanges) {
  TFont font;
  std::vector<String> names;
  for (PPropInfo info : GetPropList(&font)) names.push_back(info->Name);
  EXPECT_EQ(names, (std::vector<String>{"Charset", "Color", "Height", "Name", "Orientation", "Pitch",
                                        "Size", "Style"}));
  for (const char* name : {"Charset", "Color", "Orientation", "Pitch", "Style"})
    EXPECT_TRUE(IsDefaultPropValue(&font, FindPropInfo(&font, name))) << name;
  EXPECT_FALSE(IsStoredProp(&font, "Size"));
  EXPECT_EQ(GetPropValue(&font, "Name").AsString(), "Tahoma");
  EXPECT_EQ(GetOrdProp(&font, "Charset"), DEFAULT_CHARSET);
  EXPECT_EQ(GetOrdProp(&font, "Color"), clWindowText);
  EXPECT_EQ(font.GetSize(), 8);
  EXPECT_EQ(font.GetHeight(), -11);

  int changes = 0;
  font.SetOnChange([&](TObject* sender) {
    EXPECT_EQ(sender, &font);
    ++changes;
  });
  font.SetSize(12);
  EXPECT_EQ(font.GetHeight(), -16);
  font.SetHeight(-13);
  EXPECT_EQ(font.GetSize(), 10);
  font.SetColor(clWindowText);  // unchanged: no event
  font.SetName("");             // ignored
  font.SetName("TAHOMA");       // the same name
  SetSetProp(&font, "Style", "[fsBold,fsItalic]");
  EXPECT_EQ(changes, 3);
  EXPECT_EQ(GetSetProp(&font, "Style"), "fsBold,fsItalic");

  TFont copy;
  int copyChanges = 0;
  copy.SetOnChange([&](TObject*) { ++copyChanges; });
  font.SetCharset(RUSSIAN_CHARSET);
  font.SetName("Courier New");
  font.SetPitch(fpFixed);
  font.SetOrientation(900);
  copy.Assign(&font);
  EXPECT_EQ(copyChanges, 1);
  for (PPropInfo info : GetPropList(&font))
    EXPECT_EQ(GetPropValue(&copy, info).AsString(), GetPropValue(&font, info).AsString()) << info->Name;

  // Another resolution keeps the size in points.
  TFont printer;
  printer.SetPixelsPerInch(600);
  printer.Assign(&font);
  EXPECT_EQ(printer.GetSize(), 10);
  EXPECT_EQ(printer.GetHeight(), -83);

  TBitmap bitmap;
  EXPECT_EQ(MessageOf<EConvertError>([&] { copy.Assign(&bitmap); }), "Cannot assign a TBitmap to a TFont");
  EXPECT_EQ(copyChanges, 1);
}

TBytes StreamBytes(TMemoryStream& stream) {
  return TBytes(stream.Memory(), stream.Memory() + stream.GetSize());
}

TEST(Bitmap, SavesAndLoadsThroughStreams) {
  TBitmap bitmap(3, 2);
  bitmap.SetPixel(0, 0, clRed);
  bitmap.SetPixel(2, 0, TColor(0x123456));
  bitmap.SetPixel(1, 1, clBlue);
  bitmap.SetPixel(5, 5, clRed);  // outside: ignored
  EXPECT_EQ(bitmap.GetPixel(3, 0), TColor(-1));

  TMemoryStream stream;
  stream.WriteBuffer("xy", 2);  // saving and loading start at the stream's position
  bitmap.SaveToStream(&stream);
  const TBytes bytes = StreamBytes(stream);
  ASSERT_EQ(bytes.size(), 2u + 54 + 2 * 12);  // rows of 9 bytes padded to 12
  EXPECT_EQ(bytes[2], 'B');
  EXPECT_EQ(bytes[3], 'M');
  EXPECT_EQ(bytes[4], 78);
  // The bottom row comes first, each pixel blue, green, red.
  EXPECT_EQ(TBytes(bytes.begin() + 56, bytes.begin() + 62), (TBytes{0, 0, 0, 0xFF, 0, 0}));
  EXPECT_EQ(TBytes(bytes.begin() + 68, bytes.begin() + 71), (TBytes{0, 0, 0xFF}));

  TBitmap loaded;
  int changes = 0;
  loaded.SetOnChange([&](TObject*) { ++changes; });
  stream.SetPosition(2);
  loaded.LoadFromStream(&stream);
  EXPECT_EQ(changes, 1);
  EXPECT_TRUE(loaded.GetModified());
  EXPECT_EQ(stream.GetPosition(), stream.GetSize());
  ASSERT_EQ(loaded.GetWidth(), 3);
  ASSERT_EQ(loaded.GetHeight(), 2);
  for (int32_t y = 0; y < 2; ++y)
    for (int32_t x = 0; x < 3; ++x) EXPECT_EQ(loaded.GetPixel(x, y), bitmap.GetPixel(x, y));

  // Damaged bytes raise and leave the bitmap as it was: a wrong signature, less than the
  // header announces, less than a header.
  const TBytes saved(bytes.begin() + 2, bytes.end());
  TBytes wrongSignature = saved;
  wrongSignature[1] = 'X';
  for (const TBytes& damaged : {wrongSignature, TBytes(saved.begin(), saved.end() - 30), TBytes{'B'}}) {
    TBytesStream bad(damaged);
    EXPECT_EQ(MessageOf<EInvalidGraphic>([&] { loaded.LoadFromStream(&bad); }), "Bitmap image is not valid");
  }
  TBytes truncated(bytes.begin() + 2, bytes.end() - 1);
  truncated[2] = static_cast<uint8_t>(truncated.size());  // claims only what is there
  TBytesStream shortRows(truncated);
  EXPECT_THROW(loaded.LoadFromStream(&shortRows), EInvalidGraphic);
  EXPECT_EQ(loaded.GetWidth(), 3);
  EXPECT_EQ(loaded.GetPixel(2, 0), TColor(0x123456));

  // Nothing to read gives an empty bitmap, which writes nothing.
  TMemoryStream empty;
  loaded.LoadFromStream(&empty);
  EXPECT_TRUE(loaded.GetEmpty());
  loaded.SaveToStream(&empty);
  EXPECT_EQ(empty.GetSize(), 0);
}

TEST(Bitmap, ReadsTopDownThirtyTwoBitRowsAndFiles) {
  // A 2 x 2 bitmap written by another program: 32 bits per pixel, rows top-down.
  TBytes bytes = {'B', 'M', 70, 0, 0, 0, 0, 0, 0, 0, 54, 0, 0, 0, 40, 0, 0, 0, 2, 0, 0, 0,
                  0xFE, 0xFF, 0xFF, 0xFF, 1, 0, 32, 0};
  bytes.resize(54);
  for (uint8_t b : {1, 2, 3, 0, 4, 5, 6, 0, 7, 8, 9, 0, 10, 11, 12, 0}) bytes.push_back(b);
  TBytesStream stream(bytes);
  TBitmap bitmap;
  bitmap.LoadFromStream(&stream);
  EXPECT_EQ(bitmap.GetPixel(0, 0), TColor(0x010203));
  EXPECT_EQ(bitmap.GetPixel(1, 1), TColor(0x0A0B0C));

  testing::TTempDir dir;
  bitmap.SaveToFile(dir / "picture.bmp");
  TBitmap fromFile;
  fromFile.LoadFromFile(dir / "picture.bmp");
  EXPECT_EQ(fromFile.GetPixel(1, 0), TColor(0x040506));
  EXPECT_EQ(fromFile.GetHeight(), 2);
}

TEST(Picture, OwnsACopyOfItsGraphic) {
  TBitmap bitmap(2, 2);
  bitmap.SetPixel(1, 1, clLime);
  TPicture picture;
  int changes = 0;
  picture.SetOnChange([&](TObject*) { ++changes; });
  picture.SetGraphic(&bitmap);
  ASSERT_NE(picture.GetGraphic(), &bitmap);
  EXPECT_EQ(picture.GetGraphic()->ClassType(), TBitmap::StaticClass());
  EXPECT_EQ(picture.GetBitmap()->GetPixel(1, 1), clLime);
  picture.GetBitmap()->SetPixel(0, 0, clRed);  // the graphic's changes reach the picture
  EXPECT_EQ(changes, 2);
  EXPECT_EQ(bitmap.GetPixel(0, 0), clBlack);

  TPicture other;
  other.Assign(&picture);
  EXPECT_EQ(other.GetWidth(), 2);
  TBitmap back;
  back.Assign(&other);  // the picture hands over its bitmap
  EXPECT_EQ(back.GetPixel(0, 0), clRed);

  other.Assign(nullptr);
  EXPECT_EQ(other.GetGraphic(), nullptr);
  EXPECT_EQ(MessageOf<EConvertError>([&] { back.Assign(&other); }), "Cannot assign a TPicture to a TBitmap");
}

}  // namespace
}  // namespace orv
