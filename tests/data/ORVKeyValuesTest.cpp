// Key values as the locate and detail filters compare a record's values (first) with the keys.

#include "ORVData.h"

#include <gtest/gtest.h>

namespace orv {
namespace {

TEST(ORVKeyValues, SameValuesAreExactAndPartialOrCaselessMatchesOnlyText) {
  const Variant john("John");
  EXPECT_TRUE(SameKeyValues(john, "John"));
  EXPECT_FALSE(SameKeyValues(john, "john"));
  EXPECT_FALSE(SameKeyValues(Unassigned(), Null()));
  EXPECT_TRUE(SameKeyValues(Null(), Null()));
  // An array never matches a single value, even of one element.
  EXPECT_FALSE(SameKeyValues(john, VarArrayOf({"John"})));
  EXPECT_TRUE(SameKeyValues(VarArrayOf({1, "a"}), VarArrayOf({1, "a"})));
  EXPECT_FALSE(SameKeyValues(VarArrayOf({1, "a"}), VarArrayOf({1})));

  const TLocateOptions partial{loPartialKey};
  EXPECT_TRUE(MatchKeyValues(john, "Jo", partial));
  EXPECT_FALSE(MatchKeyValues("john", "Jo", partial));
  EXPECT_TRUE(MatchKeyValues("john", "Jo", TLocateOptions{loPartialKey, loCaseInsensitive}));
  EXPECT_FALSE(MatchKeyValues(12, "1", partial));  // not text on both sides: equality
  // The partial key applies to the last key field only.
  EXPECT_TRUE(MatchKeyValues(VarArrayOf({"Smith", john}), VarArrayOf({"Smith", "Jo"}), partial));
  EXPECT_FALSE(MatchKeyValues(VarArrayOf({"Smithers", john}), VarArrayOf({"Smith", "Jo"}),
                              partial));
}

}  // namespace
}  // namespace orv
