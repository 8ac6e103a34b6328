#include "Components.h"

namespace orv {

namespace {

[[noreturn]] void CannotCreate(TClass cls) {
  throw EAbstractError("Cannot create an instance of " + String(cls->Name) +
                       ": the class is abstract or has no default constructor");
}

}  // namespace

std::unique_ptr<TObject> CreateObject(TClass cls) {
  if (ClassInheritsFrom(cls, TComponent::StaticClass())) {
    if (!cls->ConstructComponent) CannotCreate(cls);
    return std::unique_ptr<TObject>(cls->ConstructComponent(nullptr));
  }
  if (!cls->Construct) CannotCreate(cls);
  return std::unique_ptr<TObject>(cls->Construct());
}

TComponent* CreateComponent(TClass cls, TComponent& owner) {
  if (!ClassInheritsFrom(cls, TComponent::StaticClass()))
    throw EComponentError(String(cls->Name) + " is not a component class");
  if (!cls->ConstructComponent) CannotCreate(cls);
  return cls->ConstructComponent(&owner);
}

}  // namespace orv
