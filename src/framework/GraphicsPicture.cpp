// TPicture: one owned graphic of any class.

#include "Graphics.h"

namespace orv {

ORV_IMPLEMENT_CLASS(TPicture)

TPicture::~TPicture() = default;

void TPicture::Assign(TPersistent* source) {
  if (!source) return SetGraphic(nullptr);
  if (auto* picture = dynamic_cast<TPicture*>(source)) return SetGraphic(picture->GetGraphic());
  if (auto* graphic = dynamic_cast<TGraphic*>(source)) return SetGraphic(graphic);
  TPersistent::Assign(source);
}

void TPicture::AssignTo(TPersistent* dest) {
  if (FGraphic && IsInstance(FGraphic.get(), dest->ClassType()))
    dest->Assign(FGraphic.get());
  else
    TPersistent::AssignTo(dest);
}

void TPicture::SetGraphic(TGraphic* value) {
  if (value == FGraphic.get() && value) return;
  std::unique_ptr<TGraphic> copy;
  if (value) {
    std::unique_ptr<TObject> made = CreateObject(value->ClassType());
    copy.reset(static_cast<TGraphic*>(made.release()));
    copy->Assign(value);
  }
  Adopt(std::move(copy));
}

TBitmap* TPicture::GetBitmap() {
  if (!dynamic_cast<TBitmap*>(FGraphic.get())) Adopt(std::make_unique<TBitmap>());
  return static_cast<TBitmap*>(FGraphic.get());
}

// Takes the graphic over and hears of its changes.
void TPicture::Adopt(std::unique_ptr<TGraphic> graphic) {
  FGraphic = std::move(graphic);
  if (FGraphic) FGraphic->SetOnChange([this](TObject*) { Changed(); });
  Changed();
}

void TPicture::Changed() {
  if (FOnChange) FOnChange(this);
}

}  // namespace orv
