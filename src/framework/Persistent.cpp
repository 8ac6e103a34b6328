#include "Persistent.h"

namespace orv {

ORV_IMPLEMENT_CLASS(TPersistent)

void TPersistent::Assign(TPersistent* source) {
  if (!source) AssignError(nullptr);
  source->AssignTo(this);
}

void TPersistent::AssignTo(TPersistent* dest) { dest->AssignError(this); }

void TPersistent::AssignError(const TPersistent* source) const {
  const String sourceName = source ? source->ClassName() : String("nil");
  throw EConvertError("Cannot assign a " + sourceName + " to a " + ClassName());
}

void TPersistent::DefineProperties(TFiler*) {}

TPersistent* TPersistent::GetOwner() const { return nullptr; }

String TPersistent::GetNamePath() const {
  String path = ClassName();
  if (TPersistent* owner = GetOwner()) {
    const String ownerPath = owner->GetNamePath();
    if (!ownerPath.empty()) path = ownerPath + "." + path;
  }
  return path;
}

}  // namespace orv
