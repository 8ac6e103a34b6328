#include "Components.h"

#include <algorithm>

namespace orv {

ORV_PUBLISH(TComponent) {
  p.Property("Name", &TComponent::GetName, &TComponent::SetName).Stored(false);
  p.Property("Tag", &TComponent::GetTag, &TComponent::SetTag).Default(0);
}

namespace {

bool IsValidIdent(const String& name) {
  auto isAlpha = [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_'; };
  auto isAlnum = [&](char c) { return isAlpha(c) || (c >= '0' && c <= '9'); };
  return !name.empty() && isAlpha(name.front()) && std::all_of(name.begin() + 1, name.end(), isAlnum);
}

void Erase(std::vector<TComponent*>& list, TComponent* item) {
  auto it = std::find(list.begin(), list.end(), item);
  if (it != list.end()) list.erase(it);
}

bool Holds(const std::vector<TComponent*>& list, const TComponent* item) {
  return std::find(list.begin(), list.end(), item) != list.end();
}

}  // namespace

TComponent::TComponent(TComponent* AOwner) {
  if (AOwner) AOwner->InsertComponent(this);
}

TComponent::~TComponent() {
  Destroying();
  RemoveFreeNotifications();
  DestroyComponents();
  if (FOwner) FOwner->RemoveComponent(this);
}

// ---------------------------------------------------------------------------------------------
// Names

void TComponent::SetName(const String& NewName) {
  if (FName == NewName) return;
  if (!NewName.empty() && !IsValidIdent(NewName))
    throw EComponentError("'" + NewName + "' is not a valid component name");
  if (FOwner)
    FOwner->ValidateRename(this, FName, NewName);
  else
    ValidateRename(nullptr, FName, NewName);
  ChangeName(NewName);
}

void TComponent::ValidateRename(TComponent* AComponent, const String& CurName, const String& NewName) {
  if (!AComponent || NewName.empty() || typinfo_detail::SameName(CurName, NewName)) return;
  TComponent* existing = FindComponent(NewName);
  if (existing && existing != AComponent)
    throw EComponentError("A component named " + NewName + " already exists");
}

TComponent* TComponent::FindComponent(std::string_view name) const {
  if (name.empty()) return nullptr;
  for (TComponent* component : FComponents)
    if (typinfo_detail::SameName(component->FName, name)) return component;
  return nullptr;
}

// ---------------------------------------------------------------------------------------------
// Ownership

TComponent* TComponent::GetComponent(int index) const {
  if (index < 0 || index >= GetComponentCount())
    throw EListError("List index out of bounds (" + std::to_string(index) + ")");
  return FComponents[static_cast<size_t>(index)];
}

int TComponent::GetComponentIndex() const {
  if (!FOwner) return -1;
  auto& siblings = FOwner->FComponents;
  return static_cast<int>(std::find(siblings.begin(), siblings.end(), this) - siblings.begin());
}

void TComponent::SetComponentIndex(int value) {
  if (!FOwner) return;
  auto& siblings = FOwner->FComponents;
  const int current = GetComponentIndex();
  value = std::clamp(value, 0, static_cast<int>(siblings.size()) - 1);
  if (value == current) return;
  siblings.erase(siblings.begin() + current);
  siblings.insert(siblings.begin() + value, this);
}

void TComponent::ValidateContainer(TComponent*) {}

void TComponent::InsertComponent(TComponent* AComponent) {
  AComponent->ValidateContainer(this);
  ValidateRename(AComponent, String(), AComponent->FName);
  if (AComponent->FOwner) AComponent->FOwner->RemoveComponent(AComponent);
  Insert(AComponent);
  if (FComponentState.Contains(csDesigning)) AComponent->SetDesigning(true);
  Notification(AComponent, opInsert);
}

void TComponent::RemoveComponent(TComponent* AComponent) {
  if (!AComponent || AComponent->FOwner != this) return;
  Notification(AComponent, opRemove);
  Remove(AComponent);
}

void TComponent::Insert(TComponent* AComponent) {
  FComponents.push_back(AComponent);
  AComponent->FOwner = this;
}

void TComponent::Remove(TComponent* AComponent) {
  AComponent->FOwner = nullptr;
  Erase(FComponents, AComponent);
}

void TComponent::DestroyComponents() {
  while (!FComponents.empty()) {
    TComponent* child = FComponents.back();
    // A child that others asked to watch tells its siblings it goes; the rest go quietly, as
    // nobody holds on to them.
    if (child->FComponentState.Contains(csFreeNotification))
      RemoveComponent(child);
    else
      Remove(child);
    delete child;
  }
}

void TComponent::Destroying() {
  if (FComponentState.Contains(csDestroying)) return;
  FComponentState.Include(csDestroying);
  for (TComponent* child : FComponents) child->Destroying();
}

// ---------------------------------------------------------------------------------------------
// Notification

void TComponent::Notification(TComponent* AComponent, TOperation Operation) {
  if (Operation == opRemove && AComponent) RemoveFreeNotification(AComponent);
  // A component told may free or move others: walk down and stay inside the list as it shrinks.
  size_t i = FComponents.size();
  while (i > 0) {
    --i;
    FComponents[i]->Notification(AComponent, Operation);
    i = std::min(i, FComponents.size());
  }
}

void TComponent::FreeNotification(TComponent* AComponent) {
  if (!AComponent || AComponent == this) return;
  if (!FOwner || AComponent->FOwner != FOwner) {
    if (!Holds(FFreeNotifies, AComponent)) {
      FFreeNotifies.push_back(AComponent);
      AComponent->FreeNotification(this);
    }
  }
  FComponentState.Include(csFreeNotification);
}

void TComponent::RemoveFreeNotification(TComponent* AComponent) {
  if (!AComponent) return;
  RemoveNotification(AComponent);
  AComponent->RemoveNotification(this);
}

void TComponent::RemoveNotification(TComponent* AComponent) { Erase(FFreeNotifies, AComponent); }

void TComponent::RemoveFreeNotifications() {
  // Each one forgets this component before it hears of its end, whatever its Notification does.
  while (!FFreeNotifies.empty()) {
    TComponent* other = FFreeNotifies.back();
    FFreeNotifies.pop_back();
    other->RemoveNotification(this);
    other->Notification(this, opRemove);
  }
}

// ---------------------------------------------------------------------------------------------
// State

void TComponent::Loaded() { FComponentState.Exclude(csLoading); }

void TComponent::SetSubComponent(bool isSubComponent) {
  if (isSubComponent)
    FComponentStyle.Include(csSubComponent);
  else
    FComponentStyle.Exclude(csSubComponent);
}

void TComponent::SetDesigning(bool value, bool setChildren) {
  if (value)
    FComponentState.Include(csDesigning);
  else
    FComponentState.Exclude(csDesigning);
  if (setChildren)
    for (TComponent* child : FComponents) child->SetDesigning(value);
}

void TComponent::SetAncestor(bool value) {
  if (value)
    FComponentState.Include(csAncestor);
  else
    FComponentState.Exclude(csAncestor);
  for (TComponent* child : FComponents) child->SetAncestor(value);
}

void TComponent::GetChildren(const TGetChildProc&, TComponent*) {}

}  // namespace orv
