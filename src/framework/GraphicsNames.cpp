// Names of colours and character sets, and the name maps they are looked up in.

#include "Graphics.h"
#include "SysUtils.h"

namespace orv {

bool IdentToInt(const String& ident, int32_t& value, std::span<const TIdentMapEntry> map) {
  for (const TIdentMapEntry& entry : map)
    if (SameText(ident, entry.Name)) {
      value = entry.Value;
      return true;
    }
  return false;
}

bool IntToIdent(int32_t value, String& ident, std::span<const TIdentMapEntry> map) {
  for (const TIdentMapEntry& entry : map)
    if (entry.Value == value) {
      ident = entry.Name;
      return true;
    }
  return false;
}

namespace {

void EachName(std::span<const TIdentMapEntry> map, const TGetStrProc& proc) {
  for (const TIdentMapEntry& entry : map) proc(entry.Name);
}

// The named colours. clLtGray and clDkGray repeat clSilver and clGray, so they are not here:
// a value is named by its first entry.
constexpr TIdentMapEntry Colors[] = {
    {clBlack, "clBlack"},
    {clMaroon, "clMaroon"},
    {clGreen, "clGreen"},
    {clOlive, "clOlive"},
    {clNavy, "clNavy"},
    {clPurple, "clPurple"},
    {clTeal, "clTeal"},
    {clGray, "clGray"},
    {clSilver, "clSilver"},
    {clRed, "clRed"},
    {clLime, "clLime"},
    {clYellow, "clYellow"},
    {clBlue, "clBlue"},
    {clFuchsia, "clFuchsia"},
    {clAqua, "clAqua"},
    {clWhite, "clWhite"},
    {clMoneyGreen, "clMoneyGreen"},
    {clSkyBlue, "clSkyBlue"},
    {clCream, "clCream"},
    {clMedGray, "clMedGray"},
    {clActiveBorder, "clActiveBorder"},
    {clActiveCaption, "clActiveCaption"},
    {clAppWorkSpace, "clAppWorkSpace"},
    {clBackground, "clBackground"},
    {clBtnFace, "clBtnFace"},
    {clBtnHighlight, "clBtnHighlight"},
    {clBtnShadow, "clBtnShadow"},
    {clBtnText, "clBtnText"},
    {clCaptionText, "clCaptionText"},
    {clDefault, "clDefault"},
    {clGradientActiveCaption, "clGradientActiveCaption"},
    {clGradientInactiveCaption, "clGradientInactiveCaption"},
    {clGrayText, "clGrayText"},
    {clHighlight, "clHighlight"},
    {clHighlightText, "clHighlightText"},
    {clHotLight, "clHotLight"},
    {clInactiveBorder, "clInactiveBorder"},
    {clInactiveCaption, "clInactiveCaption"},
    {clInactiveCaptionText, "clInactiveCaptionText"},
    {clInfoBk, "clInfoBk"},
    {clInfoText, "clInfoText"},
    {clMenu, "clMenu"},
    {clMenuBar, "clMenuBar"},
    {clMenuHighlight, "clMenuHighlight"},
    {clMenuText, "clMenuText"},
    {clNone, "clNone"},
    {clScrollBar, "clScrollBar"},
    {cl3DDkShadow, "cl3DDkShadow"},
    {cl3DLight, "cl3DLight"},
    {clWindow, "clWindow"},
    {clWindowFrame, "clWindowFrame"},
    {clWindowText, "clWindowText"},
};

constexpr TIdentMapEntry Charsets[] = {
    {ANSI_CHARSET, "ANSI_CHARSET"},
    {DEFAULT_CHARSET, "DEFAULT_CHARSET"},
    {SYMBOL_CHARSET, "SYMBOL_CHARSET"},
    {MAC_CHARSET, "MAC_CHARSET"},
    {SHIFTJIS_CHARSET, "SHIFTJIS_CHARSET"},
    {HANGEUL_CHARSET, "HANGEUL_CHARSET"},
    {JOHAB_CHARSET, "JOHAB_CHARSET"},
    {GB2312_CHARSET, "GB2312_CHARSET"},
    {CHINESEBIG5_CHARSET, "CHINESEBIG5_CHARSET"},
    {GREEK_CHARSET, "GREEK_CHARSET"},
    {TURKISH_CHARSET, "TURKISH_CHARSET"},
    {VIETNAMESE_CHARSET, "VIETNAMESE_CHARSET"},
    {HEBREW_CHARSET, "HEBREW_CHARSET"},
    {ARABIC_CHARSET, "ARABIC_CHARSET"},
    {BALTIC_CHARSET, "BALTIC_CHARSET"},
    {RUSSIAN_CHARSET, "RUSSIAN_CHARSET"},
    {THAI_CHARSET, "THAI_CHARSET"},
    {EASTEUROPE_CHARSET, "EASTEUROPE_CHARSET"},
    {OEM_CHARSET, "OEM_CHARSET"},
};

}  // namespace

// ---------------------------------------------------------------------------------------------
// Colours

bool ColorToIdent(int32_t Color, String& Ident) { return IntToIdent(Color, Ident, Colors); }

bool IdentToColor(const String& Ident, int32_t& Color) { return IdentToInt(Ident, Color, Colors); }

String ColorToString(TColor Color) {
  String name;
  if (ColorToIdent(Color, name)) return name;
  return "$" + IntToHex(static_cast<uint32_t>(Color), 8);
}

TColor StringToColor(const String& S) {
  int32_t color = 0;
  if (!IdentToColor(S, color)) color = StrToInt(S);
  return TColor(color);
}

void GetColorValues(const TGetStrProc& Proc) { EachName(Colors, Proc); }

// ---------------------------------------------------------------------------------------------
// Character sets

bool CharsetToIdent(int32_t Charset, String& Ident) { return IntToIdent(Charset, Ident, Charsets); }

bool IdentToCharset(const String& Ident, int32_t& Charset) {
  return IdentToInt(Ident, Charset, Charsets);
}

void GetCharsetValues(const TGetStrProc& Proc) { EachName(Charsets, Proc); }

}  // namespace orv
