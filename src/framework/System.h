#pragma once
// The root of the object model: TObject and class references, the exception family, reference-
// counted interfaces, and the platform's distinct value types (dates, memos, colours, currency).

#include <cstdint>
#include <exception>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace orv {

using String = std::string;         // native text, UTF-8
using WideString = std::u16string;  // wide text, UTF-16
using TBytes = std::vector<uint8_t>;

class TObject;
class TComponent;
class TClassProps;      // a class's published properties and attributes (TypInfo.h)
class TClassPublisher;  // what a class's registration fills in (TypInfo.h)

// ---------------------------------------------------------------------------------------------
// Class references

// The immutable record of a class: what `TClass` points at. One exists per class, made on the
// first call of the class's StaticClass().
struct TClassRec {
  const char* Name = "";
  const TClassRec* Parent = nullptr;
  TObject* (*Construct)() = nullptr;                           // default constructor, if any
  TComponent* (*ConstructComponent)(TComponent* Owner) = nullptr;  // constructor with an owner
  void (*Publish)(TClassPublisher&) = nullptr;                 // registers published properties
  mutable std::shared_ptr<const TClassProps> Props;            // built from Publish on first use
};
using TClass = const TClassRec*;

// True when `cls` is `ancestor` or descends from it; false when either is null.
bool ClassInheritsFrom(TClass cls, TClass ancestor) noexcept;

class TObject {
 public:
  TObject() = default;
  TObject(const TObject&) = delete;
  TObject& operator=(const TObject&) = delete;
  virtual ~TObject() = default;

  using inherited = void;
  static TClass StaticClass();
  virtual TClass ClassType() const { return StaticClass(); }

  String ClassName() const { return ClassType()->Name; }
  TClass ClassParent() const { return ClassType()->Parent; }
  bool InheritsFrom(TClass ancestor) const { return ClassInheritsFrom(ClassType(), ancestor); }
};

// The instance test of the platform: false for no object.
inline bool IsInstance(const TObject* obj, TClass cls) noexcept {
  return obj && ClassInheritsFrom(obj->ClassType(), cls);
}

template <class T>
TClassRec MakeClassRec(const char* name, void (*publish)(TClassPublisher&)) {
  TClassRec rec;
  rec.Name = name;
  rec.Parent = T::inherited::StaticClass();
  rec.Publish = publish;
  if constexpr (!std::is_abstract_v<T> && std::is_default_constructible_v<T>)
    rec.Construct = []() -> TObject* { return new T(); };
  // Only components: a persistent class whose constructor takes a TPersistent* owner (an owned
  // collection) is constructible from a TComponent* too.
  if constexpr (!std::is_abstract_v<T> && std::is_constructible_v<T, TComponent*> &&
                std::is_convertible_v<T*, TComponent*>)
    rec.ConstructComponent = [](TComponent* owner) -> TComponent* { return new T(owner); };
  return rec;
}

}  // namespace orv

// Declares the class record of a class; put it first in the class body. The members that follow
// it are private until an access specifier says otherwise, as in any class.
#define ORV_CLASS(Self, Parent)                                         \
 public:                                                                \
  using inherited = Parent;                                             \
  static ::orv::TClass StaticClass();                                   \
  ::orv::TClass ClassType() const override { return StaticClass(); }   \
                                                                        \
 private:

// Defines the class record of a class that publishes nothing of its own; in its .cpp file.
#define ORV_IMPLEMENT_CLASS(Self) ORV_IMPLEMENT_CLASS_PUBLISHING(Self, nullptr)

#define ORV_IMPLEMENT_CLASS_PUBLISHING(Self, PublishFn)                                     \
  ::orv::TClass Self::StaticClass() {                                                       \
    static const ::orv::TClassRec rec = ::orv::MakeClassRec<Self>(#Self, PublishFn);       \
    return &rec;                                                                            \
  }

namespace orv {

// The class registry: the classes that can be created by name (form files need it).
void RegisterClass(TClass cls);
void RegisterClasses(std::initializer_list<TClass> classes);
void UnRegisterClass(TClass cls);
TClass GetClass(const String& name);   // null when not registered; names compare without case
TClass FindClass(const String& name);  // raises EClassNotFound when not registered

// ---------------------------------------------------------------------------------------------
// Exceptions

class Exception : public std::exception {
 public:
  explicit Exception(String message) : FMessage(std::move(message)) {}
  const String& Message() const noexcept { return FMessage; }
  void SetMessage(String message) { FMessage = std::move(message); }
  const char* what() const noexcept override { return FMessage.c_str(); }

 private:
  String FMessage;
};

#define ORV_EXCEPTION(Name, Base)  \
  class Name : public Base {       \
   public:                         \
    using Base::Base;              \
  };

ORV_EXCEPTION(EAbort, Exception)  // the silent exception: handlers do not show it
ORV_EXCEPTION(EAbstractError, Exception)
ORV_EXCEPTION(EInvalidCast, Exception)
ORV_EXCEPTION(EInvalidOperation, Exception)
ORV_EXCEPTION(EConvertError, Exception)
ORV_EXCEPTION(EListError, Exception)
ORV_EXCEPTION(EStringListError, EListError)
ORV_EXCEPTION(ERangeError, Exception)
ORV_EXCEPTION(EIntOverflow, Exception)
ORV_EXCEPTION(EZeroDivide, Exception)
ORV_EXCEPTION(EOutOfMemory, Exception)
ORV_EXCEPTION(EArgumentException, Exception)
ORV_EXCEPTION(EInOutError, Exception)
ORV_EXCEPTION(EVariantError, Exception)
ORV_EXCEPTION(EVariantTypeCastError, EVariantError)
ORV_EXCEPTION(EVariantOverflowError, EVariantError)
ORV_EXCEPTION(EVariantInvalidArgError, EVariantError)
ORV_EXCEPTION(EVariantBadVarTypeError, EVariantError)
ORV_EXCEPTION(EVariantBadIndexError, EVariantError)
ORV_EXCEPTION(EVariantArrayLockedError, EVariantError)
ORV_EXCEPTION(EVariantArrayCreateError, EVariantError)
ORV_EXCEPTION(EStreamError, Exception)
ORV_EXCEPTION(EFCreateError, EStreamError)
ORV_EXCEPTION(EFOpenError, EStreamError)
ORV_EXCEPTION(EFilerError, EStreamError)
ORV_EXCEPTION(EReadError, EFilerError)
ORV_EXCEPTION(EWriteError, EFilerError)
ORV_EXCEPTION(EClassNotFound, EFilerError)
ORV_EXCEPTION(EPropertyError, Exception)
ORV_EXCEPTION(EPropertyConvertError, Exception)
ORV_EXCEPTION(EComponentError, Exception)
ORV_EXCEPTION(EZipException, Exception)
ORV_EXCEPTION(EZLibError, Exception)
ORV_EXCEPTION(EZCompressionError, EZLibError)
ORV_EXCEPTION(EZDecompressionError, EZLibError)
ORV_EXCEPTION(EDatabaseError, Exception)

// Raises EAbort: cancels the current operation without a message reaching the user.
[[noreturn]] void Abort();

// ---------------------------------------------------------------------------------------------
// Interfaces: reference counted, released when the last reference goes.

class IInterface {
 public:
  virtual int32_t _AddRef() = 0;
  virtual int32_t _Release() = 0;

 protected:
  ~IInterface() = default;
};

class IDispatch : public virtual IInterface {
 protected:
  ~IDispatch() = default;
};

// An object whose lifetime its interface references govern.
class TInterfacedObject : public TObject, public virtual IInterface {
  ORV_CLASS(TInterfacedObject, TObject)
 public:
  TInterfacedObject() = default;
  int32_t _AddRef() override { return ++FRefCount; }
  int32_t _Release() override;
  int32_t RefCount() const { return FRefCount; }

 private:
  int32_t FRefCount = 0;
};

// Holds one reference to an interface; copying adds one, destruction releases one.
template <class T>
class InterfacePtr {
 public:
  InterfacePtr() noexcept = default;
  InterfacePtr(std::nullptr_t) noexcept {}
  InterfacePtr(T* intf) noexcept : FIntf(intf) { AddRef(); }
  InterfacePtr(const InterfacePtr& other) noexcept : FIntf(other.FIntf) { AddRef(); }
  InterfacePtr(InterfacePtr&& other) noexcept : FIntf(std::exchange(other.FIntf, nullptr)) {}
  template <class U, class = std::enable_if_t<std::is_convertible_v<U*, T*>>>
  InterfacePtr(const InterfacePtr<U>& other) noexcept : FIntf(other.get()) { AddRef(); }
  ~InterfacePtr() { Release(); }

  InterfacePtr& operator=(InterfacePtr other) noexcept {
    std::swap(FIntf, other.FIntf);
    return *this;
  }

  T* get() const noexcept { return FIntf; }
  T* operator->() const noexcept { return FIntf; }
  T& operator*() const noexcept { return *FIntf; }
  explicit operator bool() const noexcept { return FIntf != nullptr; }
  friend bool operator==(const InterfacePtr& a, const InterfacePtr& b) noexcept {
    return a.FIntf == b.FIntf;
  }

 private:
  void AddRef() const noexcept { if (FIntf) FIntf->_AddRef(); }
  void Release() noexcept { if (FIntf) std::exchange(FIntf, nullptr)->_Release(); }
  T* FIntf = nullptr;
};

using IInterfacePtr = InterfacePtr<IInterface>;
using IDispatchPtr = InterfacePtr<IDispatch>;

// The interface `U` of an interface reference, or null when the object does not implement it.
template <class U, class T>
InterfacePtr<U> Supports(const InterfacePtr<T>& intf) {
  return InterfacePtr<U>(dynamic_cast<U*>(intf.get()));
}

// ---------------------------------------------------------------------------------------------
// Distinct value types. Each converts to and from its underlying type, but is its own type, so
// that type information tells a date from a time from a plain number.

// Days since 1899-12-30; the time of day is the fraction.
template <class Tag>
struct TDateTimeBase {
  double Val = 0;
  constexpr TDateTimeBase() = default;
  constexpr TDateTimeBase(double value) : Val(value) {}
  template <class Other>
  constexpr TDateTimeBase(TDateTimeBase<Other> other) : Val(other.Val) {}
  constexpr operator double() const { return Val; }
};
using TDateTime = TDateTimeBase<struct DateTimeTag>;
using TDate = TDateTimeBase<struct DateTag>;
using TTime = TDateTimeBase<struct TimeTag>;

// Text that is a memo rather than a string, for item-class properties that map to memo fields.
struct Memo : String {
  using String::String;
  Memo() = default;
  Memo(const String& text) : String(text) {}
  Memo(String&& text) : String(std::move(text)) {}
};
struct WideMemo : WideString {
  using WideString::WideString;
  WideMemo() = default;
  WideMemo(const WideString& text) : WideString(text) {}
  WideMemo(WideString&& text) : WideString(std::move(text)) {}
};

// A colour: 0x00BBGGRR, or a system colour; the names live in Graphics.h.
enum TColor : int32_t {};
// The character set of a font, 0..255; the names live in Graphics.h.
enum TFontCharset : uint8_t {};

// A fixed-point number with four decimals: a 64-bit integer scaled by 10 000.
class Currency {
 public:
  static constexpr int64_t Scale = 10000;

  constexpr Currency() = default;
  template <class I, std::enable_if_t<std::is_integral_v<I> && !std::is_same_v<I, bool>, int> = 0>
  constexpr Currency(I units) : FRaw(static_cast<int64_t>(units) * Scale) {}
  Currency(double value);  // rounds half to even at the fourth decimal; EVariantOverflowError if out of range

  static constexpr Currency FromRaw(int64_t raw) {
    Currency c;
    c.FRaw = raw;
    return c;
  }
  constexpr int64_t Raw() const { return FRaw; }
  constexpr double ToDouble() const { return static_cast<double>(FRaw) / Scale; }
  explicit constexpr operator double() const { return ToDouble(); }

  constexpr Currency operator-() const { return FromRaw(-FRaw); }
  Currency operator+(Currency o) const;  // these raise EIntOverflow past the range
  Currency operator-(Currency o) const;
  Currency operator*(Currency o) const;
  Currency operator/(Currency o) const;
  Currency& operator+=(Currency o) { return *this = *this + o; }
  Currency& operator-=(Currency o) { return *this = *this - o; }
  Currency& operator*=(Currency o) { return *this = *this * o; }
  Currency& operator/=(Currency o) { return *this = *this / o; }
  constexpr auto operator<=>(const Currency&) const = default;

 private:
  int64_t FRaw = 0;
};

}  // namespace orv
