#pragma once
// Published properties: the immutable property records of a class, and the builder a class's
// .cpp file fills them with (ORV_PUBLISH). A record is resolved once (by name or from the list)
// and then read and written without any name lookup.

#include <cassert>
#include <concepts>
#include <memory>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "TypInfoTypes.h"
#include "Variants.h"

namespace orv {

// The root of attributes put on published properties.
class TCustomAttribute : public TObject {
  ORV_CLASS(TCustomAttribute, TObject)
 public:
  TCustomAttribute() = default;
};

// The "no default" value of TPropInfo::Default: the property is always written.
constexpr int64_t NoDefault = INT64_MIN;

// One published property. Its accessors take the instance as a TObject of the class (or a
// descendant of the class) that published it; calling them with any other object is undefined,
// as on the platform. Those of another type category raise EPropertyError
// "Invalid property type: %s"; a write to a property without setter raises EPropertyError
// "Property is read-only".
class TPropInfo {
 public:
  TPropInfo(String name, PTypeInfo propType) : Name(std::move(name)), PropType(propType) {}
  TPropInfo(const TPropInfo&) = delete;
  TPropInfo& operator=(const TPropInfo&) = delete;
  virtual ~TPropInfo();

  String Name;
  PTypeInfo PropType;
  TClass DeclaringClass = nullptr;  // the class that published it
  int64_t Default = NoDefault;      // ordinal properties only
  int32_t NameIndex = 0;            // position in the class's property list
  std::vector<std::unique_ptr<TCustomAttribute>> Attributes;

  virtual bool IsWritable() const = 0;
  bool IsStored(const TObject* instance) const {
    return FStored ? FStored(instance) : FStoredConstant;
  }
  std::vector<const TCustomAttribute*> GetAttributes() const;

  // Ordinals (integers, characters, enumerations, sets, Int64) as a 64-bit number.
  virtual int64_t GetOrd(const TObject* instance) const;
  virtual void SetOrd(TObject* instance, int64_t value) const;
  virtual long double GetFloat(const TObject* instance) const;
  virtual void SetFloat(TObject* instance, long double value) const;
  // Text: native and wide text properties convert to the form asked for.
  virtual String GetStr(const TObject* instance) const;
  virtual void SetStr(TObject* instance, String value) const;
  virtual WideString GetWideStr(const TObject* instance) const;
  virtual void SetWideStr(TObject* instance, WideString value) const;
  virtual TObject* GetObject(const TObject* instance) const;
  // Ignores an object that is not of the property's class, as the platform does.
  virtual void SetObject(TObject* instance, TObject* value) const;
  virtual IInterfacePtr GetInterface(const TObject* instance) const;
  // EInvalidCast "Interface not supported" when the property's interface is not implemented.
  virtual void SetInterface(TObject* instance, IInterfacePtr value) const;
  virtual TMethod GetMethod(const TObject* instance) const;
  // EPropertyError "Invalid property value" for a handler of another event type.
  virtual void SetMethod(TObject* instance, const TMethod& value) const;
  // The value as a Variant of its own kind: an integer of the property's width, Boolean, an
  // enumeration's or a set's ordinal as an integer, a character as text, a float, Currency or
  // date of its kind, text, an object reference, an interface, a variant as it is. Writing
  // coerces the Variant to the property's type (an ordinal for enumerations and sets). Events
  // have no Variant form.
  virtual Variant GetAsVariant(const TObject* instance) const;
  virtual void SetAsVariant(TObject* instance, const Variant& value) const;

 protected:
  [[noreturn]] void TypeError() const;
  [[noreturn]] void ReadOnlyError() const;

 private:
  template <class C, class T>
  friend class TPropBuilder;
  std::function<bool(const TObject*)> FStored;
  bool FStoredConstant = true;
};
using PPropInfo = const TPropInfo*;

// The published properties of one class: the inherited ones first, then its own in the order
// they were published; a property published again by a descendant keeps its place.
class TClassProps {
 public:
  explicit TClassProps(std::shared_ptr<const TClassProps> parent);
  TClassProps(const TClassProps&) = delete;
  TClassProps& operator=(const TClassProps&) = delete;

  const std::vector<PPropInfo>& List() const { return FList; }
  PPropInfo Find(std::string_view name) const {
    auto it = FByName.find(name);
    return it == FByName.end() ? nullptr : it->second;
  }

 private:
  friend class TClassPublisher;
  std::shared_ptr<const TClassProps> FParent;  // keeps the inherited records alive
  std::vector<std::unique_ptr<TPropInfo>> FOwn;
  std::vector<PPropInfo> FList;
  std::unordered_map<std::string_view, PPropInfo, typinfo_detail::NameHash, typinfo_detail::NameEqual>
      FByName;
};

// The properties of `cls`, built from its Publish hook (and its ancestors') on first use.
const TClassProps& GetClassProps(TClass cls);

// What a class's Publish hook fills: adds property records in order.
class TClassPublisher {
 public:
  TClassPublisher(TClass cls, TClassProps& props) : FClass(cls), FProps(props) {}
  TClass ClassType() const { return FClass; }
  TPropInfo& Add(std::unique_ptr<TPropInfo> info);

 private:
  TClass FClass;
  TClassProps& FProps;
};

// ---------------------------------------------------------------------------------------------
// Typed property records

namespace typinfo_detail {

template <class T>
concept OrdinalValue = std::is_integral_v<T> || std::is_enum_v<T> || IsSet<T>::value;
template <class T>
concept FloatValue = std::is_floating_point_v<T> || std::is_same_v<T, Currency> ||
                     std::is_same_v<T, TDate> || std::is_same_v<T, TTime> ||
                     std::is_same_v<T, TDateTime>;
template <class T>
concept NarrowText = std::is_same_v<T, String> || std::is_same_v<T, Memo>;
template <class T>
concept WideText = std::is_same_v<T, WideString> || std::is_same_v<T, WideMemo>;
template <class T>
concept InterfaceValue = std::is_same_v<T, IInterfacePtr> || std::is_same_v<T, IDispatchPtr>;

template <OrdinalValue T>
int64_t ToOrdinal(T value) {
  if constexpr (IsSet<T>::value)
    return static_cast<int64_t>(value.Ordinal());
  else
    return static_cast<int64_t>(value);
}
template <OrdinalValue T>
T FromOrdinal(int64_t value) {
  if constexpr (IsSet<T>::value)
    return T::FromOrdinal(static_cast<uint64_t>(value));
  else if constexpr (std::is_same_v<T, bool>)
    return value != 0;
  else
    return static_cast<T>(value);
}

template <FloatValue T>
long double ToFloat(T value) {
  if constexpr (std::is_same_v<T, Currency>)
    return static_cast<long double>(value.Raw()) / Currency::Scale;
  else if constexpr (std::is_floating_point_v<T>)
    return value;
  else
    return value.Val;
}
template <FloatValue T>
T FromFloat(long double value) {
  if constexpr (std::is_floating_point_v<T>)
    return static_cast<T>(value);
  else
    return T(static_cast<double>(value));
}

// Text conversions between the two forms (UTF-8 and UTF-16).
String NarrowOf(const WideString& text);
WideString WideOf(const String& text);

template <class T>
Variant ToVariant(const T& value) {
  if constexpr (std::is_same_v<T, TFontCharset>)
    return Variant(static_cast<uint8_t>(value));
  else if constexpr (std::is_enum_v<T>)
    return Variant(static_cast<int32_t>(value));
  else if constexpr (IsSet<T>::value)
    return (value.Ordinal() >> 32) ? Variant(static_cast<int64_t>(value.Ordinal()))
                                   : Variant(static_cast<int32_t>(static_cast<uint32_t>(value.Ordinal())));
  else
    return Variant(value);
}
template <class T>
T FromVariant(const Variant& value) {
  if constexpr (OrdinalValue<T> && !std::is_same_v<T, bool>)
    return FromOrdinal<T>(value.AsInt64());
  else
    return value.As<T>();
}

struct NoSetter {};

}  // namespace typinfo_detail

// The record of a property of type T of class C, read by `Getter` (a member function of C or a
// base, or a callable taking `const C&`) and written by `Setter` (a member function, a callable
// taking `C&` and the value, or NoSetter).
template <class C, class T, class Getter, class Setter>
class TTypedPropInfo final : public TPropInfo {
  using NoSetter = typinfo_detail::NoSetter;

 public:
  TTypedPropInfo(String name, Getter getter, Setter setter)
      : TPropInfo(std::move(name), TypeInfo<T>()), FGetter(std::move(getter)), FSetter(std::move(setter)) {}

  bool IsWritable() const override { return !std::is_same_v<Setter, NoSetter>; }

  int64_t GetOrd(const TObject* instance) const override {
    if constexpr (typinfo_detail::OrdinalValue<T>) return typinfo_detail::ToOrdinal<T>(Read(instance));
    TypeError();
  }
  void SetOrd(TObject* instance, int64_t value) const override {
    if constexpr (typinfo_detail::OrdinalValue<T>)
      Write(instance, typinfo_detail::FromOrdinal<T>(value));
    else
      TypeError();
  }
  long double GetFloat(const TObject* instance) const override {
    if constexpr (typinfo_detail::FloatValue<T>) return typinfo_detail::ToFloat<T>(Read(instance));
    TypeError();
  }
  void SetFloat(TObject* instance, long double value) const override {
    if constexpr (typinfo_detail::FloatValue<T>)
      Write(instance, typinfo_detail::FromFloat<T>(value));
    else
      TypeError();
  }
  String GetStr(const TObject* instance) const override {
    if constexpr (typinfo_detail::NarrowText<T>) return Read(instance);
    if constexpr (typinfo_detail::WideText<T>) return typinfo_detail::NarrowOf(Read(instance));
    TypeError();
  }
  void SetStr(TObject* instance, String value) const override {
    if constexpr (typinfo_detail::NarrowText<T>)
      Write(instance, T(std::move(value)));
    else if constexpr (typinfo_detail::WideText<T>)
      Write(instance, T(typinfo_detail::WideOf(value)));
    else
      TypeError();
  }
  WideString GetWideStr(const TObject* instance) const override {
    if constexpr (typinfo_detail::WideText<T>) return Read(instance);
    if constexpr (typinfo_detail::NarrowText<T>) return typinfo_detail::WideOf(Read(instance));
    TypeError();
  }
  void SetWideStr(TObject* instance, WideString value) const override {
    if constexpr (typinfo_detail::WideText<T>)
      Write(instance, T(std::move(value)));
    else if constexpr (typinfo_detail::NarrowText<T>)
      Write(instance, T(typinfo_detail::NarrowOf(value)));
    else
      TypeError();
  }
  TObject* GetObject(const TObject* instance) const override {
    if constexpr (typinfo_detail::ObjectPointer<T>) return Read(instance);
    TypeError();
  }
  void SetObject(TObject* instance, TObject* value) const override {
    if constexpr (typinfo_detail::ObjectPointer<T>) {
      using Object = std::remove_pointer_t<T>;
      if (!value || IsInstance(value, Object::StaticClass())) Write(instance, static_cast<T>(value));
    } else {
      TypeError();
    }
  }
  IInterfacePtr GetInterface(const TObject* instance) const override {
    if constexpr (typinfo_detail::InterfaceValue<T>) return Read(instance);
    TypeError();
  }
  void SetInterface(TObject* instance, IInterfacePtr value) const override {
    if constexpr (std::is_same_v<T, IInterfacePtr>) {
      Write(instance, std::move(value));
    } else if constexpr (std::is_same_v<T, IDispatchPtr>) {
      IDispatchPtr dispatch = Supports<IDispatch>(value);
      if (value && !dispatch) throw EInvalidCast("Interface not supported");
      Write(instance, std::move(dispatch));
    } else {
      TypeError();
    }
  }
  Variant GetAsVariant(const TObject* instance) const override {
    if constexpr (typinfo_detail::IsFunction<T>::value)
      TypeError();
    else
      return typinfo_detail::ToVariant<T>(Read(instance));
  }
  void SetAsVariant(TObject* instance, const Variant& value) const override {
    if constexpr (typinfo_detail::IsFunction<T>::value)
      TypeError();
    else
      Write(instance, typinfo_detail::FromVariant<T>(value));
  }
  TMethod GetMethod(const TObject* instance) const override {
    if constexpr (typinfo_detail::IsFunction<T>::value) return TMethod(T(Read(instance)));
    TypeError();
  }
  void SetMethod(TObject* instance, const TMethod& value) const override {
    if constexpr (typinfo_detail::IsFunction<T>::value) {
      if (!value.Assigned()) return Write(instance, T());
      const T* handler = value.Target<T>();
      if (!handler) throw EPropertyError("Invalid property value");
      Write(instance, *handler);
    } else {
      TypeError();
    }
  }

 private:
  decltype(auto) Read(const TObject* instance) const {
    assert(IsInstance(instance, C::StaticClass()));
    return std::invoke(FGetter, static_cast<const C&>(*instance));
  }
  template <class V>
  void Write(TObject* instance, V&& value) const {
    if constexpr (std::is_same_v<Setter, NoSetter>) {
      ReadOnlyError();
    } else {
      assert(IsInstance(instance, C::StaticClass()));
      std::invoke(FSetter, static_cast<C&>(*instance), std::forward<V>(value));
    }
  }

  Getter FGetter;
  Setter FSetter;
};

// Sets the details of a property of type T of class C just published:
//   p.Property(...).Default(0).Stored(&C::IsXStored).Attribute<FieldSizeAttribute>(30)
template <class C, class T>
class TPropBuilder {
 public:
  explicit TPropBuilder(TPropInfo& info) : FInfo(info) {}

  TPropBuilder& Default(const T& value)
    requires typinfo_detail::OrdinalValue<T>
  {
    FInfo.Default = typinfo_detail::ToOrdinal<T>(value);
    return *this;
  }
  // Only a bool: a predicate that does not fit must not turn into `true` silently.
  template <std::same_as<bool> B>
  TPropBuilder& Stored(B stored) {
    FInfo.FStored = nullptr;
    FInfo.FStoredConstant = stored;
    return *this;
  }
  // A const member function of C (or a base) returning bool, or a callable taking const C&.
  template <class Pred>
    requires std::is_invocable_r_v<bool, const Pred&, const C&>
  TPropBuilder& Stored(Pred predicate) {
    FInfo.FStored = [predicate = std::move(predicate)](const TObject* instance) {
      return static_cast<bool>(std::invoke(predicate, static_cast<const C&>(*instance)));
    };
    return *this;
  }
  TPropBuilder& Attribute(std::unique_ptr<TCustomAttribute> attribute) {
    FInfo.Attributes.push_back(std::move(attribute));
    return *this;
  }
  template <class A, class... Args>
  TPropBuilder& Attribute(Args&&... args) {
    return Attribute(std::make_unique<A>(std::forward<Args>(args)...));
  }

 private:
  TPropInfo& FInfo;
};

// The typed face of TClassPublisher that a class's ORV_PUBLISH body receives as `p`.
template <class C>
class TPublisher {
 public:
  explicit TPublisher(TClassPublisher& target) : FTarget(target) {}

  // A read-only property; its type is what the getter returns.
  template <class Getter>
  auto Property(String name, Getter getter) {
    return Add(std::move(name), std::move(getter), typinfo_detail::NoSetter{});
  }
  template <class Getter, class Setter>
  auto Property(String name, Getter getter, Setter setter) {
    return Add(std::move(name), std::move(getter), std::move(setter));
  }

 private:
  template <class Getter, class Setter>
  auto Add(String name, Getter getter, Setter setter) {
    static_assert(std::is_invocable_v<const Getter&, const C&>,
                  "a getter is a const member function or a callable taking const C&");
    using T = std::remove_cvref_t<std::invoke_result_t<const Getter&, const C&>>;
    static_assert(std::is_same_v<Setter, typinfo_detail::NoSetter> ||
                      std::is_invocable_v<const Setter&, C&, T>,
                  "a setter is a member function or a callable taking C& and the property's value");
    using Record = TTypedPropInfo<C, T, Getter, Setter>;
    TPropInfo& info =
        FTarget.Add(std::make_unique<Record>(std::move(name), std::move(getter), std::move(setter)));
    return TPropBuilder<C, T>(info);
  }

  TClassPublisher& FTarget;
};

// GetAttribute<FieldSizeAttribute>(info): the property's attribute of class A, or null.
template <class A>
const A* GetAttribute(PPropInfo info) {
  for (const auto& attribute : info->Attributes)
    if (auto* found = dynamic_cast<const A*>(attribute.get())) return found;
  return nullptr;
}

}  // namespace orv

// Defines the class record of a class together with its published properties, in its .cpp
// file; the body fills the publisher `p`:
//   ORV_PUBLISH(TFont) { p.Property("Color", &TFont::GetColor, &TFont::SetColor).Default(clWindowText); }
#define ORV_PUBLISH(Self)                                                     \
  static void OrvPublishTyped_##Self(::orv::TPublisher<Self>& p);             \
  static void OrvPublish_##Self(::orv::TClassPublisher& target) {             \
    ::orv::TPublisher<Self> typed(target);                                    \
    OrvPublishTyped_##Self(typed);                                            \
  }                                                                           \
  ORV_IMPLEMENT_CLASS_PUBLISHING(Self, OrvPublish_##Self)                     \
  static void OrvPublishTyped_##Self([[maybe_unused]] ::orv::TPublisher<Self>& p)
