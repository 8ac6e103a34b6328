// TFont: a font description whose changes are announced through OnChange.

#include <cmath>

#include "Graphics.h"
#include "SysUtils.h"

namespace orv {

ORV_PUBLISH(TFont) {
  p.Property("Charset", &TFont::GetCharset, &TFont::SetCharset).Default(DEFAULT_CHARSET);
  p.Property("Color", &TFont::GetColor, &TFont::SetColor).Default(clWindowText);
  p.Property("Height", &TFont::GetHeight, &TFont::SetHeight);
  p.Property("Name", &TFont::GetName, &TFont::SetName);
  p.Property("Orientation", &TFont::GetOrientation, &TFont::SetOrientation).Default(0);
  p.Property("Pitch", &TFont::GetPitch, &TFont::SetPitch).Default(fpDefault);
  p.Property("Size", &TFont::GetSize, &TFont::SetSize).Stored(false);  // Height holds it
  p.Property("Style", &TFont::GetStyle, &TFont::SetStyle).Default(TFontStyles{});
}

namespace {

// a * b / c rounded half away from zero, as the platform converts points and pixels.
int32_t MulDiv(int32_t a, int32_t b, int32_t c) {
  return static_cast<int32_t>(std::llround(static_cast<double>(int64_t{a} * b) / c));
}

}  // namespace

TFont::TFont() = default;

template <class T>
void TFont::Change(T& field, const T& value) {
  if (field == value) return;
  field = value;
  Changed();
}

void TFont::Changed() {
  if (FOnChange) FOnChange(this);
}

void TFont::Assign(TPersistent* source) {
  auto* font = dynamic_cast<TFont*>(source);
  if (!font) return TPersistent::Assign(source);
  FCharset = font->FCharset;
  FColor = font->FColor;
  // The same size in points, whatever the two resolutions.
  FHeight = FPixelsPerInch == font->FPixelsPerInch ? font->FHeight
                                                    : -MulDiv(font->GetSize(), FPixelsPerInch, 72);
  FName = font->FName;
  FOrientation = font->FOrientation;
  FPitch = font->FPitch;
  FStyle = font->FStyle;
  Changed();
}

void TFont::SetCharset(TFontCharset value) { Change(FCharset, value); }
void TFont::SetColor(TColor value) { Change(FColor, value); }
void TFont::SetHeight(int32_t value) { Change(FHeight, value); }
void TFont::SetOrientation(int32_t value) { Change(FOrientation, value); }
void TFont::SetPitch(TFontPitch value) { Change(FPitch, value); }
void TFont::SetStyle(TFontStyles value) { Change(FStyle, value); }

void TFont::SetName(const TFontName& value) {
  if (value.empty() || SameText(value, FName)) return;
  FName = value;
  Changed();
}

int32_t TFont::GetSize() const { return -MulDiv(FHeight, 72, FPixelsPerInch); }

void TFont::SetSize(int32_t value) { SetHeight(-MulDiv(value, FPixelsPerInch, 72)); }

// Keeps the height in pixels, as a font moved to another device does.
void TFont::SetPixelsPerInch(int32_t value) {
  if (value > 0) FPixelsPerInch = value;
}

}  // namespace orv
