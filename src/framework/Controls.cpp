// TControl and TWinControl: controls, their parents and the controls a parent contains.

#include <algorithm>

#include "Controls.h"

namespace orv {

ORV_PUBLISH(TControl) {
  p.Property("Left", &TControl::GetLeft, &TControl::SetLeft);
  p.Property("Top", &TControl::GetTop, &TControl::SetTop);
  p.Property("Width", &TControl::GetWidth, &TControl::SetWidth);
  p.Property("Height", &TControl::GetHeight, &TControl::SetHeight);
  p.Property("Align", &TControl::GetAlign, &TControl::SetAlign).Default(alNone);
  p.Property("Caption", &TControl::GetCaption, &TControl::SetCaption);
  p.Property("Color", &TControl::GetColor, &TControl::SetColor).Default(clWindow);
  p.Property("Cursor", &TControl::GetCursor, &TControl::SetCursor).Default(crDefault);
  p.Property("Enabled", &TControl::GetEnabled, &TControl::SetEnabled).Default(true);
  p.Property("Font", &TControl::GetFont, &TControl::SetFont);
  p.Property("Hint", &TControl::GetHint, &TControl::SetHint);
  p.Property("Text", &TControl::GetText, &TControl::SetText).Stored(false);  // Caption holds it
  p.Property("Visible", &TControl::GetVisible, &TControl::SetVisible).Default(true);
}

ORV_IMPLEMENT_CLASS(TGraphicControl)
ORV_IMPLEMENT_CLASS(TWinControl)

namespace {

bool EraseFrom(std::vector<TControl*>& list, const TControl* control) {
  auto it = std::find(list.begin(), list.end(), control);
  if (it == list.end()) return false;
  list.erase(it);
  return true;
}

}  // namespace

// ---------------------------------------------------------------------------------------------
// TControl

TControl::TControl(TComponent* AOwner) : TComponent(AOwner), FFont(std::make_unique<TFont>()) {}

TControl::~TControl() {
  Destroying();
  if (FParent) FParent->RemoveControl(this);
}

void TControl::SetParent(TWinControl* AParent) {
  if (AParent == FParent) return;
  if (AParent)
    AParent->InsertControl(this);
  else
    FParent->RemoveControl(this);
}

TComponent* TControl::GetParentComponent() const { return FParent; }

void TControl::SetVisible(bool value) { FVisible = value; }

void TControl::SetBounds(int32_t ALeft, int32_t ATop, int32_t AWidth, int32_t AHeight) {
  FLeft = ALeft;
  FTop = ATop;
  FWidth = AWidth;
  FHeight = AHeight;
}

// ---------------------------------------------------------------------------------------------
// TWinControl

TWinControl::TWinControl(TComponent* AOwner) : TControl(AOwner) {}

TWinControl::~TWinControl() {
  Destroying();
  // The controls belong to their owners: they only lose their parent.
  for (TControl* control : FControls) control->FParent = nullptr;
  for (TControl* control : FWinControls) control->FParent = nullptr;
  FControls.clear();
  FWinControls.clear();
}

TControl* TWinControl::GetControl(int index) const {
  if (index < 0 || index >= GetControlCount())
    throw EListError("List index out of bounds (" + std::to_string(index) + ")");
  const auto i = static_cast<size_t>(index);
  return i < FControls.size() ? FControls[i] : FWinControls[i - FControls.size()];
}

void TWinControl::InsertControl(TControl* AControl) {
  if (!AControl || AControl->FParent == this) return;
  auto* windowed = dynamic_cast<TWinControl*>(AControl);
  if (windowed && windowed->ContainsControl(this))
    throw EInvalidOperation("A control cannot have itself as its parent");
  if (AControl->FParent) AControl->FParent->RemoveControl(AControl);
  (windowed ? FWinControls : FControls).push_back(AControl);
  AControl->FParent = this;
}

void TWinControl::RemoveControl(TControl* AControl) {
  if (!AControl || AControl->FParent != this) return;
  if (!EraseFrom(FControls, AControl)) EraseFrom(FWinControls, AControl);
  AControl->FParent = nullptr;
}

bool TWinControl::ContainsControl(const TControl* Control) const {
  while (Control && Control != this) Control = Control->FParent;
  return Control != nullptr;
}

void TWinControl::GetChildren(const TGetChildProc& proc, TComponent* root) {
  for (int i = 0; i < GetControlCount(); ++i) {
    TControl* control = GetControl(i);
    if (control->GetOwner() == root) proc(control);
  }
}

}  // namespace orv
