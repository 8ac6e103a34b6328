// A first look at the platform's values: variants and their coercions under the process-wide
// format settings, dates, and exact currency.
#include <iostream>

#include "SysUtils.h"
#include "Variants.h"

using namespace orv;

int main() {
  FormatSettings = TFormatSettings::Invariant();
  FormatSettings.ShortDateFormat = "yyyy-mm-dd";
  FormatSettings.DateSeparator = '-';

  const Variant price = "12.5";  // text, as a packet or an edit control would give it
  std::cout << "price as a number + 1:  " << price.AsDouble() + 1 << '\n';
  FormatSettings.DecimalSeparator = ',';
  std::cout << "12.5 as text under a decimal comma: " << VarToStr(Variant(Currency(12.5)))
            << '\n';
  FormatSettings.DecimalSeparator = '.';

  const Variant born = EncodeDate(2011, 3, 4);
  std::cout << "a date variant as text:  " << VarToStr(born) << '\n';
  std::cout << "parsed back:             " << VarToStr(Variant(StrToDate("2011-03-04"))) << '\n';
  std::cout << "formatted:               " << FormatDateTime("dddd d mmmm yyyy", born.AsDateTime())
            << '\n';

  const Currency total = StrToCurr("0.1") + StrToCurr("0.2");
  std::cout << "0.1 + 0.2 in currency:   " << CurrToStr(total) << '\n';

  NullStrictConvert = false;
  std::cout << "Null as an integer (lenient): " << Null().AsInteger() << '\n';
  NullStrictConvert = true;
  try {
    Null().AsInteger();
  } catch (const EVariantError& e) {
    std::cout << "Null as an integer (strict):  " << e.Message() << '\n';
  }
  return 0;
}
