#include <gtest/gtest.h>

#include <algorithm>

#include "Components.h"

namespace orv::component_test {

using TLog = std::vector<String>;

// Logs what it is told and drops its peer when the peer goes; its destructor reads the peer, so
// a stale reference shows up under AddressSanitizer.
class TLogged : public TComponent {
  ORV_CLASS(TLogged, TComponent)
 public:
  explicit TLogged(TComponent* owner = nullptr) : TComponent(owner) {}
  ~TLogged() override {
    Destroying();
    if (FLog) FLog->push_back("free " + GetName() + (FPeer ? " peer " + FPeer->GetName() : ""));
  }
  static TLogged* Make(TLog& log, const String& name, TComponent* owner) {
    auto* c = new TLogged();  // named before insertion, so that the notifications say who it is
    c->FLog = &log;
    c->SetName(name);
    if (owner) owner->InsertComponent(c);
    return c;
  }
  void SetPeer(TLogged* peer) {
    if (FPeer) FPeer->RemoveFreeNotification(this);
    FPeer = peer;
    if (peer) peer->FreeNotification(this);
  }
  TLogged* Peer() const { return FPeer; }

 protected:
  void Notification(TComponent* AComponent, TOperation Operation) override {
    if (FLog) FLog->push_back(GetName() + (Operation == opInsert ? " +" : " -") + AComponent->GetName());
    if (Operation == opRemove && AComponent == FPeer) FPeer = nullptr;
    TComponent::Notification(AComponent, Operation);
  }

 private:
  TLog* FLog = nullptr;
  TLogged* FPeer = nullptr;
};

class TAbstractWidget : public TComponent {
  ORV_CLASS(TAbstractWidget, TComponent)
 public:
  using TComponent::TComponent;
  virtual void Paint() = 0;
};

ORV_IMPLEMENT_CLASS(TLogged)
ORV_IMPLEMENT_CLASS(TAbstractWidget)

namespace {

template <class E, class F>
void ExpectError(F action, const char* message) {
  try {
    action();
    ADD_FAILURE() << "no exception, expected: " << message;
  } catch (const E& e) {
    EXPECT_EQ(e.Message(), message);
  }
}

TLog Frees(const TLog& log) {
  TLog frees;
  std::copy_if(log.begin(), log.end(), std::back_inserter(frees), [](const String& s) { return s.rfind("free", 0) == 0; });
  return frees;
}

TEST(Components, OwnerNotifiesItsComponentsAndFreesThemNewestFirst) {
  TLog log;
  std::unique_ptr<TLogged> form(TLogged::Make(log, "Form", nullptr));
  TLogged* a = TLogged::Make(log, "A", form.get());
  TLogged* b = TLogged::Make(log, "B", form.get());
  EXPECT_EQ(log, (TLog{"Form +A", "A +A", "Form +B", "B +B", "A +B"}));
  EXPECT_EQ(form->GetComponentCount(), 2);
  EXPECT_EQ(b->GetComponentIndex(), 1);
  EXPECT_EQ(form->FindComponent("a"), a);

  log.clear();
  delete a;  // leaves its owner, whose other components hear of it
  EXPECT_EQ(log, (TLog{"free A", "Form -A", "B -A"}));
  EXPECT_EQ(form->GetComponentCount(), 1);

  TLogged::Make(log, "C", form.get());
  TLogged::Make(log, "D", form.get());
  form->GetComponent(2)->SetComponentIndex(0);
  EXPECT_EQ(form->GetComponent(0)->GetName(), "D");
  ExpectError<EListError>([&] { form->GetComponent(3); }, "List index out of bounds (3)");
  log.clear();
  form.reset();
  EXPECT_EQ(Frees(log), (TLog{"free Form", "free C", "free B", "free D"}));
}

TEST(Components, NamesAreIdentifiersUniquePerOwnerWithoutCase) {
  TLog log;
  TComponent form;
  TLogged* a = TLogged::Make(log, "Button1", &form);
  TLogged* b = TLogged::Make(log, "Button2", &form);
  ExpectError<EComponentError>([&] { b->SetName("BUTTON1"); }, "A component named BUTTON1 already exists");
  ExpectError<EComponentError>([&] { b->SetName("2nd"); }, "'2nd' is not a valid component name");
  ExpectError<EComponentError>([&] { SetStrProp(b, "Name", "a b"); }, "'a b' is not a valid component name");
  EXPECT_EQ(b->GetName(), "Button2");
  a->SetName("button1");  // the same name in other letters
  EXPECT_EQ(form.FindComponent("BUTTON1"), a);
  EXPECT_EQ(form.FindComponent(""), nullptr);

  // Taking in a component of a clashing name fails and leaves it with its former owner.
  TComponent other;
  TLogged* clash = TLogged::Make(log, "Button1", &other);
  ExpectError<EComponentError>([&] { form.InsertComponent(clash); }, "A component named Button1 already exists");
  EXPECT_EQ(clash->GetOwner(), &other);
  EXPECT_EQ(form.GetComponentCount(), 2);
  clash->SetName("Button3");
  form.InsertComponent(clash);
  EXPECT_EQ(clash->GetOwner(), &form);
  EXPECT_EQ(other.GetComponentCount(), 0);

  EXPECT_EQ(GetPropList(TComponent::StaticClass()).size(), 2u);
  EXPECT_FALSE(IsStoredProp(a, "Name"));  // form files write it in the object's header
  EXPECT_TRUE(IsDefaultPropValue(a, GetPropInfo(a, "Tag")));
  EXPECT_EQ(a->GetNamePath(), "button1");
}

// Two components of different owners watch each other; whichever owner goes first, the
// survivor hears of it and holds no stale reference.
TEST(Components, FreeNotificationAcrossOwnersInEitherOrder) {
  for (bool firstGoesFirst : {true, false}) {
    TLog log;
    auto first = std::make_unique<TComponent>();
    auto second = std::make_unique<TComponent>();
    TLogged* a = TLogged::Make(log, "A", first.get());
    TLogged* b = TLogged::Make(log, "B", second.get());
    a->SetPeer(b);
    b->SetPeer(a);
    EXPECT_TRUE(a->GetComponentState().Contains(csFreeNotification));
    log.clear();
    if (firstGoesFirst) {
      first.reset();
      EXPECT_EQ(log, (TLog{"A -A", "free A peer B", "B -A"}));
      EXPECT_EQ(b->Peer(), nullptr);
    } else {
      second.reset();
      EXPECT_EQ(log, (TLog{"B -B", "free B peer A", "A -B"}));
      EXPECT_EQ(a->Peer(), nullptr);
    }
  }

  TLog log;
  TComponent first, second;
  TLogged* a = TLogged::Make(log, "A", &first);
  TLogged* b = TLogged::Make(log, "B", &second);
  a->SetPeer(b);
  a->SetPeer(nullptr);  // drops the reference and the free notification with it
  log.clear();
  delete b;
  EXPECT_EQ(log, (TLog{"free B"}));
}

// Siblings referring to each other: the owner tells the remaining ones of each watched child
// it frees, so none reads a freed sibling in its destructor.
TEST(Components, OwnerFreesChildrenThatReferToEachOther) {
  TLog log;
  auto form = std::make_unique<TComponent>();
  TLogged* a = TLogged::Make(log, "A", form.get());
  TLogged* b = TLogged::Make(log, "B", form.get());
  TLogged* c = TLogged::Make(log, "C", form.get());
  a->SetPeer(c);
  c->SetPeer(a);
  b->SetPeer(a);
  log.clear();
  form.reset();
  EXPECT_EQ(Frees(log), (TLog{"free C peer A", "free B peer A", "free A"}));
}

TEST(ClassReferences, CreateByReferenceAndByRegisteredName) {
  std::unique_ptr<TObject> loose = CreateObject(TLogged::StaticClass());
  EXPECT_EQ(loose->ClassType(), TLogged::StaticClass());
  EXPECT_EQ(static_cast<TComponent*>(loose.get())->GetOwner(), nullptr);
  EXPECT_EQ(CreateObject(TPersistent::StaticClass())->ClassName(), "TPersistent");

  RegisterClass(TLogged::StaticClass());
  TComponent form;
  TComponent* made = CreateComponent(FindClass("tlogged"), form);
  UnRegisterClass(TLogged::StaticClass());
  EXPECT_EQ(made->ClassType(), TLogged::StaticClass());
  EXPECT_EQ(made->GetOwner(), &form);
  EXPECT_EQ(form.GetComponent(0), made);

  ExpectError<EAbstractError>([] { CreateObject(TAbstractWidget::StaticClass()); },
                              "Cannot create an instance of TAbstractWidget: the class is abstract or "
                              "has no default constructor");
  ExpectError<EComponentError>([&] { CreateComponent(TPersistent::StaticClass(), form); },
                               "TPersistent is not a component class");
  EXPECT_EQ(form.GetComponentCount(), 1);
}

}  // namespace
}  // namespace orv::component_test
