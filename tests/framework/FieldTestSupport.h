#pragma once
// What the field tests share: the two format settings they run under, the check of an error
// message, and a test data set built from a list of definitions and rows.

#include <gtest/gtest.h>

#include <initializer_list>
#include <memory>

#include "TestDataSet.h"
#include "TestSupport.h"

namespace orv::test {

// Puts the process-wide settings back when the test ends, however it ends.
using SettingsGuard = testing::TSettingsGuard;

// "." with ISO dates, and "," with German dates.
inline TFormatSettings DotSettings() {
  TFormatSettings settings = TFormatSettings::Invariant();
  settings.DecimalSeparator = '.';
  settings.ThousandSeparator = ',';
  settings.DateSeparator = '-';
  settings.ShortDateFormat = "yyyy-mm-dd";
  settings.LongTimeFormat = "hh:nn:ss";
  settings.CurrencyString = "$";
  settings.CurrencyFormat = 0;
  settings.CurrencyDecimals = 2;
  return settings;
}

inline TFormatSettings CommaSettings() {
  TFormatSettings settings = TFormatSettings::Invariant();
  settings.DecimalSeparator = ',';
  settings.ThousandSeparator = '.';
  settings.DateSeparator = '.';
  settings.ShortDateFormat = "dd.mm.yyyy";
  settings.LongTimeFormat = "hh:nn:ss";
  settings.CurrencyString = "EUR";
  settings.CurrencyFormat = 3;
  settings.CurrencyDecimals = 2;
  return settings;
}

template <class E = EDatabaseError, class F>
void ExpectMessage(F&& action, const String& message) {
  try {
    action();
    ADD_FAILURE() << "no exception, expected: " << message;
  } catch (const E& e) {
    EXPECT_EQ(String(e.what()), message);
  }
}

struct TDefSpec {
  const char* Name;
  TFieldType Type;
  int32_t Size = 0;
};

// A closed test data set with these definitions and rows (in the order of the flat
// definitions).
inline std::unique_ptr<TTestDataSet> MakeDataSet(
    std::initializer_list<TDefSpec> defs, std::initializer_list<std::vector<Variant>> rows = {}) {
  auto dataSet = std::make_unique<TTestDataSet>();
  for (const TDefSpec& def : defs) dataSet->GetFieldDefs()->Add(def.Name, def.Type, def.Size);
  for (const auto& row : rows) dataSet->AddRow(row);
  return dataSet;
}

}  // namespace orv::test
