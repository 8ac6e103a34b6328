#pragma once
// TComponent: named objects owned by other components, with free notification between them; and
// the creation of objects and components from class references.

#include <functional>
#include <memory>
#include <string_view>
#include <vector>

#include "Persistent.h"
#include "TypInfo.h"

namespace orv {

ORV_ENUM(TComponentStateFlag, csLoading, csReading, csWriting, csDestroying, csDesigning, csAncestor,
         csUpdating, csFixups, csFreeNotification, csInline, csDesignInstance)
using TComponentState = TSet<TComponentStateFlag>;
ORV_ENUM(TComponentStyleFlag, csInheritable, csCheckPropAvail, csSubComponent, csTransient)
using TComponentStyle = TSet<TComponentStyleFlag>;
ORV_ENUM(TOperation, opInsert, opRemove)

class TComponent;
using TGetChildProc = std::function<void(TComponent* child)>;

// A component belongs to its owner, which frees it; freeing a component first takes it out of
// its owner. Published: Name (not stored: form files write it in the object's header) and Tag.
//
// Destruction: a C++ destructor does not reach the overrides of derived classes, so a class that
// must act while still whole (close, detach, notify) calls Destroying() first in its own
// destructor. TComponent's destructor then marks it destroying (if nobody did), tells the
// components that asked for free notification, frees the owned components (newest first), and
// leaves its owner, which tells the owner's other components. A component told of a removal
// (opRemove) must only drop its references to the component: that one is already partly gone.
class TComponent : public TPersistent {
  ORV_CLASS(TComponent, TPersistent)
 public:
  explicit TComponent(TComponent* AOwner = nullptr);
  ~TComponent() override;

  TComponent* GetOwner() const override { return FOwner; }
  const String& GetName() const { return FName; }
  // EComponentError "'%s' is not a valid component name" unless empty or an identifier;
  // "A component named %s already exists" when another component of the owner has the name
  // (compared without case).
  virtual void SetName(const String& NewName);
  int64_t GetTag() const { return FTag; }
  void SetTag(int64_t value) { FTag = value; }
  String GetNamePath() const override { return FName; }

  // Owned components, in the order of insertion.
  int GetComponentCount() const { return static_cast<int>(FComponents.size()); }
  // EListError "List index out of bounds (%d)" outside 0..count-1.
  TComponent* GetComponent(int index) const;
  // The position in the owner's list; -1 without owner.
  int GetComponentIndex() const;
  void SetComponentIndex(int value);  // clamped to the owner's list
  // Null for an empty name or none of that name (compared without case).
  TComponent* FindComponent(std::string_view name) const;
  // Takes a component into this one's ownership (out of its former owner's).
  void InsertComponent(TComponent* AComponent);
  // Gives it up without freeing it: the caller then owns it.
  void RemoveComponent(TComponent* AComponent);
  // Frees the owned components, newest first.
  void DestroyComponents();

  TComponentState GetComponentState() const { return FComponentState; }
  TComponentStyle GetComponentStyle() const { return FComponentStyle; }
  // A subcomponent is stored inside the component that holds it in a form file.
  void SetSubComponent(bool isSubComponent);
  // The designer's switch: the component (and by default its owned components) is designed.
  void SetDesigning(bool value, bool setChildren = true);
  // Marks this component and its owned components as being destroyed; idempotent.
  void Destroying();

  // Asks that AComponent be told (Notification opRemove) when this one is freed, and the other
  // way round. Components of the same owner hear of each other through their owner anyway.
  void FreeNotification(TComponent* AComponent);
  void RemoveFreeNotification(TComponent* AComponent);

  // For form files: the components stored inside this one, and a parent other than the owner.
  virtual void GetChildren(const TGetChildProc& proc, TComponent* root);
  virtual TComponent* GetParentComponent() const { return nullptr; }
  virtual bool HasParent() const { return false; }

 protected:
  // Told of every component inserted into or removed from the owner (and of this one's free
  // notifications); passes it on to the owned components. Overrides call the inherited one.
  virtual void Notification(TComponent* AComponent, TOperation Operation);
  // Called once the component has been read from a form file; clears csLoading.
  virtual void Loaded();
  virtual void ChangeName(const String& NewName) { FName = NewName; }
  virtual void ValidateRename(TComponent* AComponent, const String& CurName, const String& NewName);
  // Lets a component refuse an owner; raises to refuse.
  virtual void ValidateContainer(TComponent* AComponent);
  void SetAncestor(bool value);
  void Updating() { FComponentState.Include(csUpdating); }
  void Updated() { FComponentState.Exclude(csUpdating); }

  TComponentState FComponentState;

 private:
  friend class TFiler;
  friend class TReader;
  friend class TWriter;

  void Insert(TComponent* AComponent);
  void Remove(TComponent* AComponent);
  void RemoveNotification(TComponent* AComponent);
  void RemoveFreeNotifications();

  TComponent* FOwner = nullptr;
  String FName;
  int64_t FTag = 0;
  TComponentStyle FComponentStyle{csInheritable};
  std::vector<TComponent*> FComponents;    // owned: freed by this component
  std::vector<TComponent*> FFreeNotifies;  // not owned: told when this one is freed
};

// ---------------------------------------------------------------------------------------------
// Creating instances of class references

// An object of `cls` that the caller owns: a component class through its constructor with an
// owner (none), any other class through its default constructor. EAbstractError "Cannot create
// an instance of %s: the class is abstract or has no default constructor" otherwise.
std::unique_ptr<TObject> CreateObject(TClass cls);
// A component of `cls` owned by `owner`. EComponentError "%s is not a component class" for
// other classes, EAbstractError as above for a component class that cannot be constructed.
TComponent* CreateComponent(TClass cls, TComponent& owner);

}  // namespace orv
