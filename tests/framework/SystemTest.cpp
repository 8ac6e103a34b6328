#include <gtest/gtest.h>

#include "System.h"

namespace orv {
namespace {

class TShape : public TObject {
  ORV_CLASS(TShape, TObject)
 public:
  virtual double Area() const = 0;
};

class TSquare : public TShape {
  ORV_CLASS(TSquare, TShape)
 public:
  double Area() const override { return 4; }
};

}  // namespace

ORV_IMPLEMENT_CLASS(TShape)
ORV_IMPLEMENT_CLASS(TSquare)

namespace {

TEST(ClassReferences, DescentNamesAndFactories) {
  TSquare square;
  EXPECT_EQ(square.ClassName(), "TSquare");
  EXPECT_EQ(square.ClassParent(), TShape::StaticClass());
  EXPECT_TRUE(square.InheritsFrom(TObject::StaticClass()));
  EXPECT_FALSE(IsInstance(nullptr, TObject::StaticClass()));
  EXPECT_EQ(TShape::StaticClass()->Construct, nullptr);  // abstract: no default construction
  std::unique_ptr<TObject> made(TSquare::StaticClass()->Construct());
  EXPECT_EQ(made->ClassType(), TSquare::StaticClass());
}

TEST(ClassReferences, RegistryFindsByNameWithoutCase) {
  EXPECT_EQ(GetClass("TSquare"), nullptr);
  RegisterClass(TSquare::StaticClass());
  EXPECT_EQ(GetClass("tsquare"), TSquare::StaticClass());
  UnRegisterClass(TSquare::StaticClass());
  try {
    FindClass("TSquare");
    FAIL();
  } catch (const EClassNotFound& e) {
    EXPECT_STREQ(e.what(), "Class TSquare not found");
  }
}

TEST(Currency, ExactArithmeticAndRounding) {
  EXPECT_EQ(Currency(0.00005).Raw(), 0);  // half to even
  EXPECT_EQ(Currency(0.00025).Raw(), 2);
  EXPECT_EQ(Currency(0.00035).Raw(), 4);
  EXPECT_EQ((Currency(12.345) * Currency(3)).Raw(), 370350);
  EXPECT_EQ((Currency(1) / Currency(3)).Raw(), 3333);
  EXPECT_THROW(Currency::FromRaw(INT64_MAX) + Currency::FromRaw(1), EIntOverflow);
  EXPECT_THROW(Currency(1) / Currency(), EZeroDivide);
  EXPECT_THROW(Currency(1e300), EVariantOverflowError);
}

class TCounted : public TInterfacedObject, public IDispatch {
 public:
  explicit TCounted(bool& freed) : FFreed(freed) {}
  ~TCounted() override { FFreed = true; }

 private:
  bool& FFreed;
};

TEST(Interfaces, LastReferenceFreesTheObject) {
  bool freed = false;
  {
    IInterfacePtr first(static_cast<IInterface*>(new TCounted(freed)));
    IDispatchPtr dispatch = Supports<IDispatch>(first);
    ASSERT_TRUE(dispatch);
    IInterfacePtr copy = first;
    first = nullptr;
    EXPECT_FALSE(freed);
  }
  EXPECT_TRUE(freed);
}

}  // namespace
}  // namespace orv
