// Forms and the screen that lists them.

#include <algorithm>

#include "Forms.h"

namespace orv {

ORV_PUBLISH(TCustomForm) {
  // Published again: a form starts hidden, so hidden is its default.
  p.Property("Visible", &TCustomForm::GetVisible, &TCustomForm::SetVisible).Default(false);
}

ORV_IMPLEMENT_CLASS(TForm)
ORV_IMPLEMENT_CLASS(TScreen)

namespace {

// Set once the process's screen is gone (at exit), so that forms freed later do not reach it.
bool ScreenGone = false;

struct TScreenHolder {
  TScreen Screen;
  ~TScreenHolder() { ScreenGone = true; }
};

TScreen* LiveScreen() { return ScreenGone ? nullptr : &Screen(); }

[[noreturn]] void IndexError(int index) {
  throw EListError("List index out of bounds (" + std::to_string(index) + ")");
}

}  // namespace

TScreen& Screen() {
  static TScreenHolder holder;
  return holder.Screen;
}

// ---------------------------------------------------------------------------------------------
// TCustomForm

TCustomForm::TCustomForm(TComponent* AOwner) : TWinControl(AOwner) {
  TControl::SetVisible(false);
  if (TScreen* screen = LiveScreen()) screen->AddForm(this);
}

TCustomForm::~TCustomForm() {
  Destroying();
  if (TScreen* screen = LiveScreen()) screen->RemoveForm(this);
}

void TCustomForm::SetVisible(bool value) {
  TControl::SetVisible(value);
  if (TScreen* screen = LiveScreen(); screen && !value) screen->Deactivate(this);
}

void TCustomForm::Show() {
  SetVisible(true);
  SetFocus();
}

void TCustomForm::SetFocus() {
  if (!GetVisible() || !GetEnabled())
    throw EInvalidOperation("Cannot focus a disabled or invisible window");
  if (TScreen* screen = LiveScreen()) screen->Activate(this);
}

bool TCustomForm::GetActive() const {
  const TScreen* screen = LiveScreen();
  return screen && screen->GetActiveCustomForm() == this;
}

void TCustomForm::GetChildren(const TGetChildProc& proc, TComponent* root) {
  TWinControl::GetChildren(proc, root);
  if (root != this) return;
  for (int i = 0; i < GetComponentCount(); ++i) {
    TComponent* component = GetComponent(i);
    if (!component->HasParent()) proc(component);
  }
}

// ---------------------------------------------------------------------------------------------
// TScreen

TScreen::TScreen(TComponent* AOwner) : TComponent(AOwner) {}

TScreen::~TScreen() { Destroying(); }

int TScreen::GetFormCount() const {
  return static_cast<int>(std::count_if(FCustomForms.begin(), FCustomForms.end(), [](TCustomForm* form) {
    return IsInstance(form, TForm::StaticClass());
  }));
}

TForm* TScreen::GetForm(int index) const {
  int left = index;
  for (TCustomForm* form : FCustomForms)
    if (IsInstance(form, TForm::StaticClass()) && left-- == 0) return static_cast<TForm*>(form);
  IndexError(index);
}

TCustomForm* TScreen::GetCustomForm(int index) const {
  if (index < 0 || index >= GetCustomFormCount()) IndexError(index);
  return FCustomForms[static_cast<size_t>(index)];
}

TForm* TScreen::GetActiveForm() const {
  return IsInstance(FActiveCustomForm, TForm::StaticClass()) ? static_cast<TForm*>(FActiveCustomForm)
                                                             : nullptr;
}

void TScreen::AddForm(TCustomForm* form) { FCustomForms.push_back(form); }

void TScreen::RemoveForm(TCustomForm* form) {
  auto it = std::find(FCustomForms.begin(), FCustomForms.end(), form);
  if (it != FCustomForms.end()) FCustomForms.erase(it);
  Deactivate(form);
}

void TScreen::Activate(TCustomForm* form) {
  auto it = std::find(FCustomForms.begin(), FCustomForms.end(), form);
  if (it != FCustomForms.end()) std::rotate(FCustomForms.begin(), it, it + 1);
  SetActive(form);
}

void TScreen::Deactivate(TCustomForm* form) {
  if (form != FActiveCustomForm) return;
  auto next = std::find_if(FCustomForms.begin(), FCustomForms.end(), [form](TCustomForm* other) {
    return other != form && other->GetVisible();
  });
  SetActive(next == FCustomForms.end() ? nullptr : *next);
}

void TScreen::SetActive(TCustomForm* form) {
  if (form == FActiveCustomForm) return;
  FActiveCustomForm = form;
  if (FOnActiveFormChange) FOnActiveFormChange(this);
}

}  // namespace orv
