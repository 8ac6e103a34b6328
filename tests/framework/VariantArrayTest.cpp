#include <gtest/gtest.h>

#include "Variants.h"

namespace orv {
namespace {

template <class E, class F>
void ExpectMessage(F&& action, const char* message) {
  try {
    action();
    ADD_FAILURE() << "no exception, expected: " << message;
  } catch (const E& e) {
    EXPECT_STREQ(e.what(), message);
  }
}

TEST(VariantArray, BoundsAndElementsOfTwoDimensions) {
  Variant grid = VarArrayCreate({1, 3, -1, 0}, varInteger);
  EXPECT_EQ(grid.VType(), varArray | varInteger);
  ASSERT_EQ(VarArrayDimCount(grid), 2);
  EXPECT_EQ(VarArrayLowBound(grid, 1), 1);
  EXPECT_EQ(VarArrayHighBound(grid, 1), 3);
  EXPECT_EQ(VarArrayLowBound(grid, 2), -1);
  EXPECT_EQ(VarArrayHighBound(grid, 2), 0);
  for (int32_t i = 1; i <= 3; ++i)
    for (int32_t j = -1; j <= 0; ++j) VarArrayPut(grid, IntToStr(i * 10 + j), {i, j});
  for (int32_t i = 1; i <= 3; ++i)
    for (int32_t j = -1; j <= 0; ++j) {
      const Variant element = VarArrayGet(grid, {i, j});
      EXPECT_EQ(element.VType(), varInteger);  // the text was converted on the way in
      EXPECT_EQ(element.AsInteger(), i * 10 + j) << i << "," << j;
    }
  ExpectMessage<EVariantBadIndexError>([&] { VarArrayGet(grid, {4, 0}); },
                                       "Variant or safe array index out of bounds");
  EXPECT_THROW(VarArrayGet(grid, {1}), EVariantBadIndexError);
  EXPECT_THROW(VarArrayHighBound(grid, 3), EVariantBadIndexError);
  EXPECT_EQ(VarArrayDimCount(1), 0);
  ExpectMessage<EVariantInvalidArgError>([] { VarArrayLowBound(1, 1); }, "Invalid argument");
  // A failed conversion leaves the element as it was.
  EXPECT_THROW(VarArrayPut(grid, "x", {1, 0}), EVariantTypeCastError);
  EXPECT_EQ(VarArrayGet(grid, {1, 0}).AsInteger(), 10);
  ExpectMessage<EVariantArrayCreateError>([] { VarArrayCreate({0, 1, 2}, varInteger); },
                                          "Error creating variant or safe array");
  EXPECT_THROW(VarArrayCreate({0, 1}, varUnknown), EVariantArrayCreateError);
}

TEST(VariantArray, CopiesAreIndependentAfterAWrite) {
  Variant a = VarArrayOf({1, "two", 3.0});
  Variant b = a;
  VarArrayPut(b, 9, {0});
  EXPECT_EQ(a[0].AsInteger(), 1);
  EXPECT_EQ(b[0].AsInteger(), 9);
  EXPECT_EQ(b[1].AsString(), "two");

  // An array put into itself holds its old value, not itself (which would never be freed).
  VarArrayPut(a, a, {1});
  EXPECT_TRUE(VarIsArray(a[1]));
  EXPECT_EQ(a[1][1].AsString(), "two");

  Variant redimmed = b;
  VarArrayRedim(redimmed, 4);
  EXPECT_EQ(VarArrayHighBound(b, 1), 2);
  EXPECT_EQ(VarArrayHighBound(redimmed, 1), 4);
  EXPECT_EQ(redimmed[2].AsDouble(), 3.0);
  EXPECT_TRUE(VarIsEmpty(redimmed[4]));
}

TEST(VariantArray, LockHandsOutStorageAndPreventsRedimAndRelease) {
  Variant bytes = VarArrayCreate({0, 3}, varByte);
  const Variant before = bytes;
  auto* raw = static_cast<uint8_t*>(VarArrayLock(bytes));
  EXPECT_TRUE(VarArrayIsLocked(bytes));
  raw[0] = 0xAB;
  raw[3] = 0xCD;
  EXPECT_EQ(before[0].AsByte(), 0);  // the lock unshared the storage first
  const Variant copy = bytes;        // a copy of a locked array does not share it
  raw[1] = 0x11;
  EXPECT_EQ(copy[1].AsByte(), 0);
  EXPECT_FALSE(VarArrayIsLocked(copy));

  ExpectMessage<EVariantArrayLockedError>([&] { VarArrayRedim(bytes, 10); },
                                          "Variant or safe array is locked");
  EXPECT_THROW(bytes = Variant(5), EVariantArrayLockedError);
  EXPECT_THROW(VarClear(bytes), EVariantArrayLockedError);
  EXPECT_TRUE(VarIsArray(bytes));
  VarArrayPut(bytes, 0x22, {2});  // writing an element is allowed while locked
  EXPECT_EQ(raw[2], 0x22);
  VarArrayUnlock(bytes);
  EXPECT_THROW(VarArrayUnlock(bytes), EVariantError);

  VarArrayRedim(bytes, 5);
  EXPECT_EQ(VarToBytes(bytes), (TBytes{0xAB, 0x11, 0x22, 0xCD, 0, 0}));
  VarArrayRedim(bytes, 1);
  EXPECT_EQ(VarToBytes(bytes), (TBytes{0xAB, 0x11}));

  Variant list = VarArrayOf({"a", 2});
  auto* items = static_cast<Variant*>(VarArrayLock(list));
  items[1] = "b";
  VarArrayUnlock(list);
  EXPECT_EQ(list[1].AsString(), "b");
  bytes = Variant();  // unlocked: released normally
}

TEST(VariantArray, BytesRoundTrip) {
  SCOPED_TRACE("byte arrays carry graphics and byte fields");
  const TBytes data{0, 1, 254, 255};
  const Variant v = VarFromBytes(data);
  EXPECT_EQ(v.VType(), varArray | varByte);
  EXPECT_EQ(VarArrayLowBound(v, 1), 0);
  EXPECT_EQ(VarArrayHighBound(v, 1), 3);
  EXPECT_EQ(VarToBytes(v), data);
  EXPECT_EQ(v[2].VType(), varByte);
  EXPECT_TRUE(VarToBytes(Variant()).empty());
  EXPECT_TRUE(VarFromBytes({}) == VarArrayCreate({0, -1}, varByte));
  ExpectMessage<EVariantTypeCastError>([] { VarToBytes(Variant(5)); },
                                       "Could not convert variant of type (Integer) into type "
                                       "(Array Byte)");
  EXPECT_THROW(VarAsType(v, varString), EVariantTypeCastError);
}

}  // namespace
}  // namespace orv
