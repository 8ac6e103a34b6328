#include "System.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>

namespace orv {

bool ClassInheritsFrom(TClass cls, TClass ancestor) noexcept {
  if (!ancestor) return false;
  for (; cls; cls = cls->Parent)
    if (cls == ancestor) return true;
  return false;
}

TClass TObject::StaticClass() {
  static const TClassRec rec = [] {
    TClassRec r;
    r.Name = "TObject";
    r.Construct = []() { return new TObject(); };
    return r;
  }();
  return &rec;
}

ORV_IMPLEMENT_CLASS(TInterfacedObject)

int32_t TInterfacedObject::_Release() {
  const int32_t count = --FRefCount;
  if (count == 0) delete this;
  return count;
}

// ---------------------------------------------------------------------------------------------
// Class registry

namespace {

struct NoCaseLess {
  bool operator()(const String& a, const String& b) const {
    return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) {
      auto lower = [](char c) { return (c >= 'A' && c <= 'Z') ? char(c - 'A' + 'a') : c; };
      return lower(x) < lower(y);
    });
  }
};

std::map<String, TClass, NoCaseLess>& ClassRegistry() {
  static std::map<String, TClass, NoCaseLess> registry;
  return registry;
}

}  // namespace

void RegisterClass(TClass cls) {
  if (cls) ClassRegistry().emplace(cls->Name, cls);
}

void RegisterClasses(std::initializer_list<TClass> classes) {
  for (TClass cls : classes) RegisterClass(cls);
}

void UnRegisterClass(TClass cls) {
  if (!cls) return;
  auto& registry = ClassRegistry();
  auto it = registry.find(cls->Name);
  if (it != registry.end() && it->second == cls) registry.erase(it);
}

TClass GetClass(const String& name) {
  auto& registry = ClassRegistry();
  auto it = registry.find(name);
  return it == registry.end() ? nullptr : it->second;
}

TClass FindClass(const String& name) {
  if (TClass cls = GetClass(name)) return cls;
  throw EClassNotFound("Class " + name + " not found");
}

void Abort() { throw EAbort("Operation aborted"); }

// ---------------------------------------------------------------------------------------------
// Currency

namespace {

[[noreturn]] void CurrencyOverflow() { throw EIntOverflow("Integer overflow"); }

int64_t Checked(__int128 value) {
  if (value > std::numeric_limits<int64_t>::max() || value < std::numeric_limits<int64_t>::min())
    CurrencyOverflow();
  return static_cast<int64_t>(value);
}

// Division of 128-bit values rounded half to even, as the platform's floating-point unit rounds.
__int128 DivRoundEven(__int128 num, __int128 den) {
  __int128 q = num / den, r = num % den;
  const __int128 twice = (r < 0 ? -r : r) * 2, absDen = den < 0 ? -den : den;
  if (twice > absDen || (twice == absDen && (q & 1))) q += ((num < 0) != (den < 0)) ? -1 : 1;
  return q;
}

}  // namespace

Currency::Currency(double value) {
  const double scaled = value * Scale;
  if (!std::isfinite(scaled) || scaled >= 9223372036854775807.0 || scaled < -9223372036854775808.0)
    throw EVariantOverflowError("Arithmetic overflow occurred");
  FRaw = static_cast<int64_t>(std::nearbyint(scaled));
}

Currency Currency::operator+(Currency o) const { return FromRaw(Checked(__int128(FRaw) + o.FRaw)); }
Currency Currency::operator-(Currency o) const { return FromRaw(Checked(__int128(FRaw) - o.FRaw)); }
Currency Currency::operator*(Currency o) const {
  return FromRaw(Checked(DivRoundEven(__int128(FRaw) * o.FRaw, Scale)));
}
Currency Currency::operator/(Currency o) const {
  if (o.FRaw == 0) throw EZeroDivide("Floating point division by zero");
  return FromRaw(Checked(DivRoundEven(__int128(FRaw) * Scale, o.FRaw)));
}

}  // namespace orv
