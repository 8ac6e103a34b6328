#pragma once
// Colours and character sets with their names, fonts, and graphics saved to and loaded from
// streams. Nothing is drawn: these are the values and objects components keep and stream.

#include <functional>
#include <memory>
#include <span>
#include <vector>

#include "Classes.h"
#include "TypInfo.h"

namespace orv {

ORV_EXCEPTION(EInvalidGraphic, Exception)
ORV_EXCEPTION(EInvalidGraphicOperation, Exception)

// ---------------------------------------------------------------------------------------------
// Names of integer constants

struct TIdentMapEntry {
  int32_t Value;
  const char* Name;
};

// The value of a name in `map` (compared without case); false when the map has no such name.
bool IdentToInt(const String& ident, int32_t& value, std::span<const TIdentMapEntry> map);
// The first name of `value` in `map`; false when the value has none.
bool IntToIdent(int32_t value, String& ident, std::span<const TIdentMapEntry> map);

using TGetStrProc = std::function<void(const String& S)>;

// ---------------------------------------------------------------------------------------------
// Colours: 0x00BBGGRR, or a system colour 0xFF000000 | the system's colour index.

constexpr TColor SystemColor(int32_t index) {
  return TColor(static_cast<int32_t>(0xFF000000u | static_cast<uint32_t>(index)));
}

constexpr TColor clBlack = TColor(0x000000);
constexpr TColor clMaroon = TColor(0x000080);
constexpr TColor clGreen = TColor(0x008000);
constexpr TColor clOlive = TColor(0x008080);
constexpr TColor clNavy = TColor(0x800000);
constexpr TColor clPurple = TColor(0x800080);
constexpr TColor clTeal = TColor(0x808000);
constexpr TColor clGray = TColor(0x808080);
constexpr TColor clSilver = TColor(0xC0C0C0);
constexpr TColor clRed = TColor(0x0000FF);
constexpr TColor clLime = TColor(0x00FF00);
constexpr TColor clYellow = TColor(0x00FFFF);
constexpr TColor clBlue = TColor(0xFF0000);
constexpr TColor clFuchsia = TColor(0xFF00FF);
constexpr TColor clAqua = TColor(0xFFFF00);
constexpr TColor clLtGray = TColor(0xC0C0C0);
constexpr TColor clDkGray = TColor(0x808080);
constexpr TColor clWhite = TColor(0xFFFFFF);
constexpr TColor clMoneyGreen = TColor(0xC0DCC0);
constexpr TColor clSkyBlue = TColor(0xF0CAA6);
constexpr TColor clCream = TColor(0xF0FBFF);
constexpr TColor clMedGray = TColor(0xA4A0A0);
constexpr TColor clNone = TColor(0x1FFFFFFF);
constexpr TColor clDefault = TColor(0x20000000);

constexpr TColor clSystemColor = SystemColor(0);
constexpr TColor clScrollBar = SystemColor(0);
constexpr TColor clBackground = SystemColor(1);
constexpr TColor clActiveCaption = SystemColor(2);
constexpr TColor clInactiveCaption = SystemColor(3);
constexpr TColor clMenu = SystemColor(4);
constexpr TColor clWindow = SystemColor(5);
constexpr TColor clWindowFrame = SystemColor(6);
constexpr TColor clMenuText = SystemColor(7);
constexpr TColor clWindowText = SystemColor(8);
constexpr TColor clCaptionText = SystemColor(9);
constexpr TColor clActiveBorder = SystemColor(10);
constexpr TColor clInactiveBorder = SystemColor(11);
constexpr TColor clAppWorkSpace = SystemColor(12);
constexpr TColor clHighlight = SystemColor(13);
constexpr TColor clHighlightText = SystemColor(14);
constexpr TColor clBtnFace = SystemColor(15);
constexpr TColor clBtnShadow = SystemColor(16);
constexpr TColor clGrayText = SystemColor(17);
constexpr TColor clBtnText = SystemColor(18);
constexpr TColor clInactiveCaptionText = SystemColor(19);
constexpr TColor clBtnHighlight = SystemColor(20);
constexpr TColor cl3DDkShadow = SystemColor(21);
constexpr TColor cl3DLight = SystemColor(22);
constexpr TColor clInfoText = SystemColor(23);
constexpr TColor clInfoBk = SystemColor(24);
constexpr TColor clHotLight = SystemColor(26);
constexpr TColor clGradientActiveCaption = SystemColor(27);
constexpr TColor clGradientInactiveCaption = SystemColor(28);
constexpr TColor clMenuHighlight = SystemColor(29);
constexpr TColor clMenuBar = SystemColor(30);

// The colour's name ("clRed", "clBtnFace"), else "$" and eight upper-case hex digits
// ("$00123456", "$FF000019").
String ColorToString(TColor Color);
// A colour name (without regard to case) or an integer in any form StrToInt reads ("255",
// "$0000FF", "0xFF"); EConvertError "'%s' is not a valid integer value" otherwise.
TColor StringToColor(const String& S);
bool ColorToIdent(int32_t Color, String& Ident);
bool IdentToColor(const String& Ident, int32_t& Color);
// Calls `Proc` with each colour name, in the order of the colour map.
void GetColorValues(const TGetStrProc& Proc);

// ---------------------------------------------------------------------------------------------
// Character sets

constexpr TFontCharset ANSI_CHARSET = TFontCharset(0);
constexpr TFontCharset DEFAULT_CHARSET = TFontCharset(1);
constexpr TFontCharset SYMBOL_CHARSET = TFontCharset(2);
constexpr TFontCharset MAC_CHARSET = TFontCharset(77);
constexpr TFontCharset SHIFTJIS_CHARSET = TFontCharset(128);
constexpr TFontCharset HANGEUL_CHARSET = TFontCharset(129);
constexpr TFontCharset HANGUL_CHARSET = TFontCharset(129);
constexpr TFontCharset JOHAB_CHARSET = TFontCharset(130);
constexpr TFontCharset GB2312_CHARSET = TFontCharset(134);
constexpr TFontCharset CHINESEBIG5_CHARSET = TFontCharset(136);
constexpr TFontCharset GREEK_CHARSET = TFontCharset(161);
constexpr TFontCharset TURKISH_CHARSET = TFontCharset(162);
constexpr TFontCharset VIETNAMESE_CHARSET = TFontCharset(163);
constexpr TFontCharset HEBREW_CHARSET = TFontCharset(177);
constexpr TFontCharset ARABIC_CHARSET = TFontCharset(178);
constexpr TFontCharset BALTIC_CHARSET = TFontCharset(186);
constexpr TFontCharset RUSSIAN_CHARSET = TFontCharset(204);
constexpr TFontCharset THAI_CHARSET = TFontCharset(222);
constexpr TFontCharset EASTEUROPE_CHARSET = TFontCharset(238);
constexpr TFontCharset OEM_CHARSET = TFontCharset(255);

// "ANSI_CHARSET", "RUSSIAN_CHARSET" ...; false for a number that names no charset.
bool CharsetToIdent(int32_t Charset, String& Ident);
// The charset of such a name (without regard to case); false for any other text.
bool IdentToCharset(const String& Ident, int32_t& Charset);
void GetCharsetValues(const TGetStrProc& Proc);

// ---------------------------------------------------------------------------------------------
// Fonts

ORV_ENUM(TFontPitch, fpDefault, fpVariable, fpFixed)
ORV_ENUM(TFontStyle, fsBold, fsItalic, fsUnderline, fsStrikeOut)
using TFontStyles = TSet<TFontStyle>;
using TFontName = String;

// The resolution fonts convert between points and pixels with: the platform's standard screen.
constexpr int32_t DefaultPixelsPerInch = 96;

// A font description. Starts as 8-point "Tahoma" (Height -11 at 96 pixels per inch), the
// default charset, clWindowText, no style. Height is in pixels (negative: the character height
// without internal leading) and Size in points; they are two views of one value, so only
// Height is stored. Every change that alters a value fires OnChange once.
class TFont : public TPersistent {
  ORV_CLASS(TFont, TPersistent)
 public:
  TFont();

  // Copies every value of another font and fires OnChange once.
  void Assign(TPersistent* source) override;

  TFontCharset GetCharset() const { return FCharset; }
  void SetCharset(TFontCharset value);
  TColor GetColor() const { return FColor; }
  void SetColor(TColor value);
  int32_t GetHeight() const { return FHeight; }
  void SetHeight(int32_t value);
  const TFontName& GetName() const { return FName; }
  // An empty name, or the same name in other case, changes nothing.
  void SetName(const TFontName& value);
  int32_t GetOrientation() const { return FOrientation; }
  void SetOrientation(int32_t value);
  TFontPitch GetPitch() const { return FPitch; }
  void SetPitch(TFontPitch value);
  int32_t GetSize() const;
  void SetSize(int32_t value);
  TFontStyles GetStyle() const { return FStyle; }
  void SetStyle(TFontStyles value);
  int32_t GetPixelsPerInch() const { return FPixelsPerInch; }
  void SetPixelsPerInch(int32_t value);

  const TNotifyEvent& GetOnChange() const { return FOnChange; }
  void SetOnChange(TNotifyEvent handler) { FOnChange = std::move(handler); }

 protected:
  virtual void Changed();

 private:
  template <class T>
  void Change(T& field, const T& value);

  TFontCharset FCharset = DEFAULT_CHARSET;
  TColor FColor = clWindowText;
  int32_t FHeight = -11;
  TFontName FName = "Tahoma";
  int32_t FOrientation = 0;
  TFontPitch FPitch = fpDefault;
  TFontStyles FStyle;
  int32_t FPixelsPerInch = DefaultPixelsPerInch;
  TNotifyEvent FOnChange;
};

// ---------------------------------------------------------------------------------------------
// Graphics

// An image that can be saved to and loaded from a stream in its own format. Changes fire
// OnChange and set Modified.
class TGraphic : public TPersistent {
  ORV_CLASS(TGraphic, TPersistent)
 public:
  TGraphic() = default;

  virtual bool GetEmpty() const = 0;
  virtual int32_t GetWidth() const = 0;
  virtual void SetWidth(int32_t value) = 0;
  virtual int32_t GetHeight() const = 0;
  virtual void SetHeight(int32_t value) = 0;

  // Reads the image from the stream's position; EInvalidGraphic when the bytes are not one.
  virtual void LoadFromStream(TStream* stream) = 0;
  // Writes the image at the stream's position.
  virtual void SaveToStream(TStream* stream) const = 0;
  void LoadFromFile(const String& fileName);
  // Replaces the file as a whole (WriteFileReplacing).
  void SaveToFile(const String& fileName) const;

  bool GetModified() const { return FModified; }
  void SetModified(bool value);
  const TNotifyEvent& GetOnChange() const { return FOnChange; }
  void SetOnChange(TNotifyEvent handler) { FOnChange = std::move(handler); }

 protected:
  virtual void Changed();

 private:
  bool FModified = false;
  TNotifyEvent FOnChange;
};

// A device-independent bitmap: Width x Height pixels held as colours. It streams as a Windows
// BMP file ("BM", a 40-byte information header, uncompressed rows bottom-up, each padded to
// four bytes), written with 24 bits per pixel and read with 24 or 32; EInvalidGraphic "Bitmap
// image is not valid" for anything else. An empty bitmap writes nothing, and reading nothing
// (the stream at its end) gives an empty bitmap.
class TBitmap : public TGraphic {
  ORV_CLASS(TBitmap, TGraphic)
 public:
  TBitmap() = default;
  TBitmap(int32_t width, int32_t height) { SetSize(width, height); }

  // Copies another bitmap; none empties this one.
  void Assign(TPersistent* source) override;

  bool GetEmpty() const override { return FWidth == 0 || FHeight == 0; }
  int32_t GetWidth() const override { return FWidth; }
  void SetWidth(int32_t value) override { SetSize(value, FHeight); }
  int32_t GetHeight() const override { return FHeight; }
  void SetHeight(int32_t value) override { SetSize(FWidth, value); }
  // Keeps the pixels both sizes share; new pixels are black. Negative sizes count as 0.
  void SetSize(int32_t width, int32_t height);

  // The colour at (x, y) from the top left; TColor(-1) outside the bitmap.
  TColor GetPixel(int32_t x, int32_t y) const;
  // Ignored outside the bitmap; only the RGB bits of the colour are kept.
  void SetPixel(int32_t x, int32_t y, TColor color);

  void LoadFromStream(TStream* stream) override;
  void SaveToStream(TStream* stream) const override;

 private:
  int32_t FWidth = 0;
  int32_t FHeight = 0;
  std::vector<uint32_t> FPixels;  // 0x00BBGGRR, rows top-down
};

// Holds one graphic of any class, owned, copied in when set.
class TPicture : public TPersistent {
  ORV_CLASS(TPicture, TPersistent)
 public:
  TPicture() = default;
  ~TPicture() override;

  // A picture or a graphic is copied in; none clears the picture.
  void Assign(TPersistent* source) override;

  TGraphic* GetGraphic() const { return FGraphic.get(); }
  // Keeps a copy of `value` (a new graphic of its class); none clears the picture.
  void SetGraphic(TGraphic* value);
  // The graphic as a bitmap; replaces any other graphic by an empty bitmap first.
  TBitmap* GetBitmap();
  int32_t GetWidth() const { return FGraphic ? FGraphic->GetWidth() : 0; }
  int32_t GetHeight() const { return FGraphic ? FGraphic->GetHeight() : 0; }

  const TNotifyEvent& GetOnChange() const { return FOnChange; }
  void SetOnChange(TNotifyEvent handler) { FOnChange = std::move(handler); }

 protected:
  // A graphic of the destination's class takes a copy of this picture's graphic.
  void AssignTo(TPersistent* dest) override;
  virtual void Changed();

 private:
  void Adopt(std::unique_ptr<TGraphic> graphic);

  std::unique_ptr<TGraphic> FGraphic;
  TNotifyEvent FOnChange;
};

}  // namespace orv
