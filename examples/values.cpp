// A first look at the platform's value types: class references and currency arithmetic.
#include <iostream>

#include "System.h"

using namespace orv;

int main() {
  TObject object;
  std::cout << "class " << object.ClassName() << '\n';
  const Currency price = 12.345;
  const Currency total = price * Currency(3);
  std::cout << "3 x 12.345 = " << total.ToDouble() << '\n';
  return 0;
}
