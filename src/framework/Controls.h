#pragma once
// Controls without windows: TControl with its parent, position, text, colour and font, and
// TWinControl with the controls it contains; cursors and their names; the component palette.

#include <memory>
#include <vector>

#include "Classes.h"
#include "Graphics.h"

namespace orv {

// ---------------------------------------------------------------------------------------------
// Cursors

using TCursor = int16_t;

constexpr TCursor crDefault = 0;
constexpr TCursor crNone = -1;
constexpr TCursor crArrow = -2;
constexpr TCursor crCross = -3;
constexpr TCursor crIBeam = -4;
constexpr TCursor crSize = -22;
constexpr TCursor crSizeNESW = -6;
constexpr TCursor crSizeNS = -7;
constexpr TCursor crSizeNWSE = -8;
constexpr TCursor crSizeWE = -9;
constexpr TCursor crUpArrow = -10;
constexpr TCursor crHourGlass = -11;
constexpr TCursor crDrag = -12;
constexpr TCursor crNoDrop = -13;
constexpr TCursor crHSplit = -14;
constexpr TCursor crVSplit = -15;
constexpr TCursor crMultiDrag = -16;
constexpr TCursor crSQLWait = -17;
constexpr TCursor crNo = -18;
constexpr TCursor crAppStart = -19;
constexpr TCursor crHelp = -20;
constexpr TCursor crHandPoint = -21;
constexpr TCursor crSizeAll = -22;

bool CursorToIdent(int32_t Cursor, String& Ident);
bool IdentToCursor(const String& Ident, int32_t& Cursor);
// The cursor's name ("crHourGlass"), else its number.
String CursorToString(TCursor Cursor);
// A cursor name (without regard to case) or a number; EConvertError as StrToInt otherwise.
TCursor StringToCursor(const String& S);

// ---------------------------------------------------------------------------------------------
// Controls

ORV_ENUM(TAlign, alNone, alTop, alBottom, alLeft, alRight, alClient, alCustom)

class TWinControl;

// A visual element placed inside a windowed parent. Published, in this order: Left, Top, Width,
// Height, Align, Caption, Color, Cursor, Enabled, Font, Hint, Text, Visible (after the
// component's Name and Tag). Caption and
// Text are one value under two names; only Caption is stored. Parent is public, not published:
// a form file expresses it by nesting.
//
// A control leaves its parent when it is freed; a parent that is freed leaves its controls
// without a parent but does not free them (their owner does).
class TControl : public TComponent {
  ORV_CLASS(TControl, TComponent)
 public:
  explicit TControl(TComponent* AOwner = nullptr);
  ~TControl() override;

  TWinControl* GetParent() const { return FParent; }
  // Leaves the old parent's controls and joins the new one's. EInvalidOperation "A control
  // cannot have itself as its parent" for the control itself or a control inside it.
  virtual void SetParent(TWinControl* AParent);
  TComponent* GetParentComponent() const override;
  bool HasParent() const override { return true; }

  bool GetVisible() const { return FVisible; }
  virtual void SetVisible(bool value);
  void Show() { SetVisible(true); }
  void Hide() { SetVisible(false); }
  bool GetEnabled() const { return FEnabled; }
  void SetEnabled(bool value) { FEnabled = value; }

  int32_t GetLeft() const { return FLeft; }
  void SetLeft(int32_t value) { SetBounds(value, FTop, FWidth, FHeight); }
  int32_t GetTop() const { return FTop; }
  void SetTop(int32_t value) { SetBounds(FLeft, value, FWidth, FHeight); }
  int32_t GetWidth() const { return FWidth; }
  void SetWidth(int32_t value) { SetBounds(FLeft, FTop, value, FHeight); }
  int32_t GetHeight() const { return FHeight; }
  void SetHeight(int32_t value) { SetBounds(FLeft, FTop, FWidth, value); }
  virtual void SetBounds(int32_t ALeft, int32_t ATop, int32_t AWidth, int32_t AHeight);

  const String& GetCaption() const { return FText; }
  void SetCaption(const String& value) { SetText(value); }
  const String& GetText() const { return FText; }
  void SetText(const String& value) { FText = value; }
  TColor GetColor() const { return FColor; }
  void SetColor(TColor value) { FColor = value; }
  // The control's own font; setting copies the values of `value` into it.
  TFont* GetFont() const { return FFont.get(); }
  void SetFont(TFont* value) { FFont->Assign(value); }
  TAlign GetAlign() const { return FAlign; }
  void SetAlign(TAlign value) { FAlign = value; }
  const String& GetHint() const { return FHint; }
  void SetHint(const String& value) { FHint = value; }
  TCursor GetCursor() const { return FCursor; }
  void SetCursor(TCursor value) { FCursor = value; }

 private:
  friend class TWinControl;

  TWinControl* FParent = nullptr;  // not owned
  bool FVisible = true;
  bool FEnabled = true;
  int32_t FLeft = 0;
  int32_t FTop = 0;
  int32_t FWidth = 0;
  int32_t FHeight = 0;
  String FText;
  TColor FColor = clWindow;
  std::unique_ptr<TFont> FFont;
  TAlign FAlign = alNone;
  String FHint;
  TCursor FCursor = crDefault;
};

// A control without a window of its own (a label, a shape); it cannot contain controls.
class TGraphicControl : public TControl {
  ORV_CLASS(TGraphicControl, TControl)
 public:
  explicit TGraphicControl(TComponent* AOwner = nullptr) : TControl(AOwner) {}
};

// A control that contains controls. As on the platform, Controls lists the controls without a
// window first, then the windowed ones, each group in the order they joined.
class TWinControl : public TControl {
  ORV_CLASS(TWinControl, TControl)
 public:
  explicit TWinControl(TComponent* AOwner = nullptr);
  ~TWinControl() override;

  int GetControlCount() const { return static_cast<int>(FControls.size() + FWinControls.size()); }
  // EListError "List index out of bounds (%d)" outside 0..count-1.
  TControl* GetControl(int index) const;
  // Makes this the control's parent (taking it from any other); EInvalidOperation as SetParent.
  void InsertControl(TControl* AControl);
  // Takes the control out; it is left without a parent. Nothing for a control not contained.
  void RemoveControl(TControl* AControl);
  // True for this control and every control inside it, at any depth.
  bool ContainsControl(const TControl* Control) const;

  // For form files: the controls it contains that `root` owns.
  void GetChildren(const TGetChildProc& proc, TComponent* root) override;

 private:
  // Not owned. Both hold TControl pointers: a control is looked for in both when it leaves,
  // because a windowed control that is being destroyed no longer answers as one.
  std::vector<TControl*> FControls;
  std::vector<TControl*> FWinControls;
};

// ---------------------------------------------------------------------------------------------
// The component palette: the pages of component classes a designer offers, in the order they
// were registered. Registering also puts the classes into the class registry.

// Adds `classes` to the page (made when new); a class already on the page keeps its place.
// EComponentError "%s is not a component class" for a class that does not descend from
// TComponent, before anything is registered.
void RegisterComponents(const String& Page, const std::vector<TClass>& ComponentClasses);
std::vector<String> GetPalettePages();
// The classes of a page (named without regard to case); empty for an unknown page.
std::vector<TClass> GetPaletteClasses(const String& Page);

}  // namespace orv
