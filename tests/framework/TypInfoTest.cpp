#include <gtest/gtest.h>

#include <algorithm>

#include "Persistent.h"
#include "SysUtils.h"
#include "TypInfo.h"

namespace orv::typinfo_test {

ORV_ENUM(TShapeKind, skCircle, skSquare, skTriangle)
ORV_ENUM(TFontStyle, fsBold, fsItalic, fsUnderline, fsStrikeOut)
using TFontStyles = TSet<TFontStyle>;
using TNotifyEvent = std::function<void(TObject* sender)>;
using TCountEvent = std::function<void(int count)>;

class TCaptionAttribute : public TCustomAttribute {
  ORV_CLASS(TCaptionAttribute, TCustomAttribute)
 public:
  explicit TCaptionAttribute(String text) : Text(std::move(text)) {}
  String Text;
};

class TItem : public TPersistent {
  ORV_CLASS(TItem, TPersistent)
 public:
  String Caption;
  int32_t Width = 0;
  bool Visible = true;
  bool IsWidthStored() const { return Width != 100; }
};

class TSample : public TItem {
  ORV_CLASS(TSample, TItem)
 public:
  int8_t Short = 0;
  uint8_t Byte = 0;
  int16_t Small = 0;
  uint16_t Word = 0;
  uint32_t Card = 0;
  int64_t Big = 0;
  uint64_t UBig = 0;
  char Ch = 'a';
  char16_t WCh = u'b';
  TShapeKind Kind = skCircle;
  TFontStyles Styles;
  float Sgl = 0;
  double Dbl = 0;
  long double Ext = 0;
  Currency Money;
  TDate Day;
  TTime Hour;
  TDateTime Stamp;
  WideString Wide;
  Memo Notes;
  WideMemo WideNotes;
  Variant Any;
  TColor Color{};
  TFontCharset Charset{};
  TItem* Child = nullptr;
  IInterfacePtr Intf;
  IDispatchPtr Disp;
  TNotifyEvent OnChange;
};

#define FIELD(Class, Name)                                         \
  p.Property(                                                      \
      #Name, [](const Class& o) { return o.Name; },                \
      [](Class& o, decltype(Class::Name) v) { o.Name = std::move(v); })

ORV_IMPLEMENT_CLASS(TCaptionAttribute)

ORV_PUBLISH(TItem) {
  FIELD(TItem, Caption).Attribute<TCaptionAttribute>("Title");
  FIELD(TItem, Width).Stored(&TItem::IsWidthStored);
  FIELD(TItem, Visible);
}

ORV_PUBLISH(TSample) {
  FIELD(TSample, Short);
  FIELD(TSample, Byte);
  FIELD(TSample, Small);
  FIELD(TSample, Word);
  FIELD(TSample, Card);
  FIELD(TSample, Big);
  FIELD(TSample, UBig);
  FIELD(TSample, Ch);
  FIELD(TSample, WCh);
  FIELD(TSample, Kind).Default(skSquare);
  FIELD(TSample, Styles).Default({fsBold});
  FIELD(TSample, Sgl);
  FIELD(TSample, Dbl);
  FIELD(TSample, Ext);
  FIELD(TSample, Money);
  FIELD(TSample, Day);
  FIELD(TSample, Hour);
  FIELD(TSample, Stamp);
  FIELD(TSample, Wide);
  FIELD(TSample, Notes);
  FIELD(TSample, WideNotes);
  FIELD(TSample, Any);
  FIELD(TSample, Color);
  FIELD(TSample, Charset);
  FIELD(TSample, Child);
  FIELD(TSample, Intf);
  FIELD(TSample, Disp);
  FIELD(TSample, OnChange);
  p.Property("Area", [](const TSample& o) { return o.Width * 2; }).Stored(false);
  // Published again: keeps its inherited place, now with a default.
  FIELD(TSample, Visible).Default(true);
}


namespace {

std::vector<String> Names(const std::vector<PPropInfo>& list) {
  std::vector<String> names;
  for (PPropInfo info : list) names.push_back(info->Name);
  return names;
}

template <class E, class F>
void ExpectError(F action, const char* message) {
  try {
    action();
    ADD_FAILURE() << "no exception, expected: " << message;
  } catch (const E& e) {
    EXPECT_EQ(e.Message(), message);
  }
}

// An interface object that is not a dispatch interface, and one that is.
class TPlain : public TInterfacedObject {};
class TDispatchable : public TInterfacedObject, public IDispatch {};

TEST(TypeRecords, TellThePlatformTypesApart) {
  struct Expected {
    PTypeInfo Info;
    TTypeKind Kind;
    const char* Name;
  };
  for (const Expected& e : {Expected{TypeInfo<int8_t>(), tkInteger, "ShortInt"},
                            {TypeInfo<uint8_t>(), tkInteger, "Byte"},
                            {TypeInfo<uint32_t>(), tkInteger, "Cardinal"},
                            {TypeInfo<uint64_t>(), tkInt64, "UInt64"},
                            {TypeInfo<char>(), tkChar, "Char"},
                            {TypeInfo<char16_t>(), tkWChar, "WideChar"},
                            {TypeInfo<bool>(), tkEnumeration, "Boolean"},
                            {TypeInfo<long double>(), tkFloat, "Extended"},
                            {TypeInfo<TDate>(), tkFloat, "TDate"},
                            {TypeInfo<TTime>(), tkFloat, "TTime"},
                            {TypeInfo<String>(), tkUString, "string"},
                            {TypeInfo<Memo>(), tkUString, "Memo"},
                            {TypeInfo<WideMemo>(), tkWString, "WideMemo"},
                            {TypeInfo<Variant>(), tkVariant, "Variant"},
                            {TypeInfo<TColor>(), tkInteger, "TColor"},
                            {TypeInfo<IDispatchPtr>(), tkInterface, "IDispatch"},
                            {TypeInfo<TItem*>(), tkClass, "TItem"},
                            {TypeInfo<TNotifyEvent>(), tkMethod, "TMethod"}}) {
    EXPECT_EQ(e.Info->Kind, e.Kind) << e.Name;
    EXPECT_EQ(e.Info->Name, e.Name);
  }
  EXPECT_NE(TypeInfo<TDate>(), TypeInfo<TDateTime>());
  EXPECT_EQ(GetTypeData(TypeInfo<Currency>())->FloatType, TFloatType::ftCurr);
  EXPECT_EQ(GetTypeData(TypeInfo<TFontCharset>())->OrdType, otUByte);
  EXPECT_EQ(GetTypeData(TypeInfo<TFontCharset>())->MaxValue, 255);
  EXPECT_EQ(GetTypeData(TypeInfo<uint32_t>())->MaxValue, 4294967295);
  EXPECT_EQ(GetTypeData(TypeInfo<TItem*>())->ClassType, TItem::StaticClass());
  EXPECT_EQ(GetTypeData(TypeInfo<bool>())->BaseType, TypeInfo<bool>());
}

TEST(TypeRecords, EnumerationAndSetNames) {
  PTypeInfo kind = TypeInfo<TShapeKind>();
  EXPECT_EQ(kind->Name, "TShapeKind");
  EXPECT_EQ(GetTypeData(kind)->MaxValue, 2);
  EXPECT_EQ(GetEnumName(kind, 1), "skSquare");
  EXPECT_EQ(GetEnumName(kind, 3), "");
  EXPECT_EQ(GetEnumValue(kind, "SKTRIANGLE"), 2);
  EXPECT_EQ(GetEnumValue(kind, "skHexagon"), -1);
  EXPECT_EQ(GetEnumName(TypeInfo<bool>(), 1), "True");
  EXPECT_EQ(GetEnumValue(TypeInfo<bool>(), "false"), 0);
  EXPECT_EQ(GetEnumName(TypeInfo<int32_t>(), -7), "-7");

  PTypeInfo styles = TypeInfo<TFontStyles>();
  EXPECT_EQ(styles->Kind, tkSet);
  EXPECT_EQ(GetTypeData(styles)->CompType, TypeInfo<TFontStyle>());
  const TFontStyles boldUnderline{fsBold, fsUnderline};
  EXPECT_EQ(SetToString(styles, boldUnderline.Ordinal(), true), "[fsBold,fsUnderline]");
  EXPECT_EQ(SetToString(styles, 0), "");
  EXPECT_EQ(StringToSet(styles, " [ fsItalic , FSBOLD ] "), (TFontStyles{fsBold, fsItalic}.Ordinal()));
  EXPECT_EQ(StringToSet(styles, "[]"), 0);
  ExpectError<EPropertyConvertError>([&] { StringToSet(styles, "fsBold,fsHuge"); },
                                     "Invalid property element: fsHuge");
}

TEST(PublishedProperties, ListInheritedFirstAndFindByNameWithoutCase) {
  const std::vector<String> names = Names(GetPropList(TSample::StaticClass()));
  ASSERT_EQ(names.size(), 32u);
  EXPECT_EQ(std::vector<String>(names.begin(), names.begin() + 5),
            (std::vector<String>{"Caption", "Width", "Visible", "Short", "Byte"}));
  EXPECT_EQ(names.back(), "Area");
  EXPECT_EQ(Names(GetPropList(TItem::StaticClass())),
            (std::vector<String>{"Caption", "Width", "Visible"}));

  TSample sample;
  PPropInfo visible = GetPropInfo(&sample, "VISIBLE");
  ASSERT_NE(visible, nullptr);
  EXPECT_EQ(visible->NameIndex, 2);
  EXPECT_EQ(visible->DeclaringClass, TSample::StaticClass());  // the republished record
  EXPECT_EQ(GetPropInfo(TItem::StaticClass(), "visible")->DeclaringClass, TItem::StaticClass());
  for (PPropInfo info : GetPropList(&sample))
    EXPECT_EQ(GetPropInfo(&sample, info->Name), info) << info->Name;

  EXPECT_EQ(GetPropInfo(&sample, "Child", {tkClass})->PropType->Kind, tkClass);
  EXPECT_EQ(GetPropInfo(&sample, "Caption", {tkClass}), nullptr);
  EXPECT_EQ(Names(GetPropList(&sample, {tkClass, tkInterface})),
            (std::vector<String>{"Child", "Intf", "Disp"}));
  EXPECT_EQ(GetPropInfo(&sample, "Nope"), nullptr);
  EXPECT_TRUE(IsPublishedProp(&sample, "onchange"));
  EXPECT_FALSE(GetPropInfo(&sample, "Area")->IsWritable());
  EXPECT_EQ(PropType(&sample, "Notes"), tkUString);
  ExpectError<EPropertyError>([&] { GetOrdProp(&sample, "Nope"); }, "Property Nope does not exist");
}

TEST(PublishedProperties, TypedAccessReachesEveryKind) {
  TSample sample;
  SetOrdProp(&sample, "Short", -5);
  SetOrdProp(&sample, "Card", 4000000000);
  SetInt64Prop(&sample, "UBig", -1);
  SetOrdProp(&sample, "WCh", 0x263A);
  SetOrdProp(&sample, "Kind", skTriangle);
  SetOrdProp(&sample, "Styles", TFontStyles{fsItalic}.Ordinal());
  SetOrdProp(&sample, "Visible", 0);
  SetOrdProp(&sample, "Color", 0x00FF00);
  EXPECT_EQ(sample.Short, -5);
  EXPECT_EQ(sample.Card, 4000000000u);
  EXPECT_EQ(sample.UBig, UINT64_MAX);
  EXPECT_EQ(sample.WCh, u'\u263A');
  EXPECT_EQ(sample.Kind, skTriangle);
  EXPECT_TRUE(sample.Styles.Contains(fsItalic));
  EXPECT_FALSE(sample.Visible);
  EXPECT_EQ(GetOrdProp(&sample, "color"), 0x00FF00);

  SetFloatProp(&sample, "Money", 12.3456L);
  SetFloatProp(&sample, "Day", 45000);
  SetFloatProp(&sample, "Ext", 1.0L / 3);
  EXPECT_EQ(sample.Money.Raw(), 123456);
  EXPECT_EQ(sample.Day.Val, 45000);
  EXPECT_EQ(GetFloatProp(&sample, "Ext"), 1.0L / 3);  // no detour through double

  // Text crosses between UTF-8 and UTF-16 properties.
  SetStrProp(&sample, "Wide", "Gr\u00FC\u00DFe");
  SetWideStrProp(&sample, "Notes", u"\u263A");
  EXPECT_EQ(sample.Wide, u"Gr\u00FC\u00DFe");
  EXPECT_EQ(sample.Notes, "\u263A");
  EXPECT_EQ(GetStrProp(&sample, "Wide"), "Gr\u00FC\u00DFe");

  TItem item;
  TCaptionAttribute notAnItem("x");
  SetObjectProp(&sample, "Child", &item);
  SetObjectProp(&sample, "Child", &notAnItem);  // ignored: not a TItem
  EXPECT_EQ(sample.Child, &item);
  EXPECT_EQ(GetObjectProp(&sample, "Child", TItem::StaticClass()), &item);
  EXPECT_EQ(GetObjectProp(&sample, "Child", TSample::StaticClass()), nullptr);
  EXPECT_EQ(GetObjectPropClass(&sample, "Child"), TItem::StaticClass());

  IInterfacePtr plain(static_cast<IInterface*>(new TPlain));
  IInterfacePtr dispatch(static_cast<IDispatch*>(new TDispatchable));
  SetInterfaceProp(&sample, "Intf", plain);
  SetInterfaceProp(&sample, "Disp", dispatch);
  ExpectError<EInvalidCast>([&] { SetInterfaceProp(&sample, "Disp", plain); }, "Interface not supported");
  EXPECT_EQ(GetInterfaceProp(&sample, "Intf"), plain);
  EXPECT_EQ(GetInterfaceProp(&sample, "Disp"), dispatch);  // unchanged by the failed write

  TObject* seen = nullptr;
  SetMethodProp(&sample, "OnChange", TNotifyEvent([&](TObject* sender) { seen = sender; }));
  ASSERT_TRUE(GetMethodProp(&sample, "OnChange").Assigned());
  GetMethodProp(&sample, "OnChange").Target<TNotifyEvent>()->operator()(&item);
  EXPECT_EQ(seen, &item);
  ExpectError<EPropertyError>([&] { SetMethodProp(&sample, "OnChange", TCountEvent([](int) {})); },
                              "Invalid property value");
  EXPECT_TRUE(static_cast<bool>(sample.OnChange));
  SetMethodProp(&sample, "OnChange", TMethod());
  EXPECT_FALSE(static_cast<bool>(sample.OnChange));

  ExpectError<EPropertyError>([&] { GetStrProp(&sample, "Width"); }, "Invalid property type: Integer");
  ExpectError<EPropertyError>([&] { SetOrdProp(&sample, "Area", 3); }, "Property is read-only");
}

TEST(PublishedProperties, ValuesPreferStringsAndConvertBack) {
  struct TSettingsScope {
    TFormatSettings Saved = FormatSettings;
    ~TSettingsScope() { FormatSettings = Saved; }
  } settingsScope;
  FormatSettings.DecimalSeparator = '.';
  TSample sample;
  sample.Kind = skSquare;
  sample.Styles = {fsBold, fsItalic};
  sample.Byte = 7;
  sample.Money = Currency(2.5);
  sample.Stamp = TDateTime(45000.5);
  sample.Child = &sample;

  auto value = [&](const char* name, bool preferStrings = true) { return GetPropValue(&sample, name, preferStrings); };
  EXPECT_EQ(value("Kind").AsString(), "skSquare");
  EXPECT_EQ(value("Styles").AsString(), "fsBold,fsItalic");
  EXPECT_EQ(value("Visible").AsString(), "True");
  EXPECT_EQ(VarType(value("Visible", false)), varBoolean);
  EXPECT_EQ(VarType(value("Kind", false)), varInteger);
  EXPECT_EQ(value("Styles", false).AsInteger(), 3);
  EXPECT_EQ(VarType(value("Byte")), varByte);
  EXPECT_EQ(VarType(value("Card")), varLongWord);
  EXPECT_EQ(value("Ch").AsString(), "a");
  EXPECT_EQ(VarType(value("Money")), varCurrency);
  EXPECT_EQ(VarType(value("Stamp")), varDate);
  EXPECT_EQ(VarType(value("Wide")), varOleStr);
  EXPECT_EQ(value("Child").AsInt64(), reinterpret_cast<intptr_t>(&sample));
  ExpectError<EPropertyError>([&] { value("OnChange"); }, "Invalid property type: TMethod");

  SetPropValue(&sample, "Kind", "SKTRIANGLE");
  EXPECT_EQ(sample.Kind, skTriangle);
  SetPropValue(&sample, "Kind", 0);
  EXPECT_EQ(sample.Kind, skCircle);
  ExpectError<ERangeError>([&] { SetPropValue(&sample, "Kind", 3); }, "Range check error");
  ExpectError<EPropertyConvertError>([&] { SetPropValue(&sample, "Kind", "skHexagon"); },
                                     "Invalid property element: skHexagon");
  EXPECT_EQ(sample.Kind, skCircle);
  SetPropValue(&sample, "Styles", "[fsUnderline]");
  EXPECT_EQ(sample.Styles, TFontStyles{fsUnderline});
  SetPropValue(&sample, "Styles", 2);
  EXPECT_EQ(sample.Styles, TFontStyles{fsItalic});
  SetPropValue(&sample, "Visible", false);
  EXPECT_FALSE(sample.Visible);
  SetPropValue(&sample, "Visible", "true");
  EXPECT_TRUE(sample.Visible);
  SetPropValue(&sample, "Width", "42");
  EXPECT_EQ(sample.Width, 42);
  ExpectError<ERangeError>([&] { SetPropValue(&sample, "Byte", 256); }, "Range check error");
  EXPECT_EQ(sample.Byte, 7);
  SetPropValue(&sample, "Ch", "z");
  EXPECT_EQ(sample.Ch, 'z');
  SetPropValue(&sample, "WCh", u"\u263A");
  EXPECT_EQ(sample.WCh, u'\u263A');
  SetPropValue(&sample, "Money", "1.2345");
  EXPECT_EQ(sample.Money.Raw(), 12345);
  SetPropValue(&sample, "Day", TDate(45001));
  EXPECT_EQ(sample.Day.Val, 45001);
  SetPropValue(&sample, "Notes", u"wide");
  EXPECT_EQ(sample.Notes, "wide");
  SetPropValue(&sample, "Any", Null());
  EXPECT_TRUE(VarIsNull(sample.Any));
  TItem item;
  SetPropValue(&sample, "Child", reinterpret_cast<intptr_t>(&item));
  EXPECT_EQ(sample.Child, &item);
}

TEST(PublishedProperties, DefaultsAndStoredPredicates) {
  TSample sample;
  PPropInfo width = GetPropInfo(&sample, "Width");
  EXPECT_TRUE(IsStoredProp(&sample, width));
  sample.Width = 100;
  EXPECT_FALSE(IsStoredProp(&sample, width));
  EXPECT_FALSE(IsStoredProp(&sample, "Area"));
  EXPECT_TRUE(IsStoredProp(&sample, "Caption"));

  auto isDefault = [&](const char* name) { return IsDefaultPropValue(&sample, GetPropInfo(&sample, name)); };
  EXPECT_EQ(GetPropInfo(&sample, "Kind")->Default, skSquare);
  EXPECT_EQ(GetPropInfo(&sample, "Width")->Default, NoDefault);
  EXPECT_FALSE(isDefault("Kind"));  // skCircle, the default is skSquare
  sample.Kind = skSquare;
  EXPECT_TRUE(isDefault("Kind"));
  EXPECT_TRUE(isDefault("Visible"));
  sample.Styles = {fsBold};
  EXPECT_TRUE(isDefault("Styles"));
  sample.Width = 0;
  EXPECT_FALSE(isDefault("Width"));  // no default: always written
  EXPECT_TRUE(isDefault("Caption"));
  EXPECT_TRUE(isDefault("Child"));
  EXPECT_TRUE(isDefault("OnChange"));
  EXPECT_TRUE(isDefault("Any"));
  sample.Any = Null();
  EXPECT_FALSE(isDefault("Any"));
  sample.Caption = "x";
  EXPECT_FALSE(isDefault("Caption"));
}

TEST(PublishedProperties, AttributesThroughTheRttiContext) {
  TRttiContext ctx;
  const TRttiType* type = ctx.GetType(TSample::StaticClass());
  ASSERT_NE(type, nullptr);
  EXPECT_EQ(ctx.GetType(TypeInfo<TSample*>()), type);
  EXPECT_EQ(type->GetName(), "TSample");
  EXPECT_EQ(type->GetProperties().size(), GetPropList(TSample::StaticClass()).size());

  const TRttiProperty* caption = type->GetProperty("caption");
  ASSERT_NE(caption, nullptr);
  const std::vector<const TCustomAttribute*> attributes = caption->GetAttributes();
  ASSERT_EQ(attributes.size(), 1u);
  EXPECT_EQ(dynamic_cast<const TCaptionAttribute*>(attributes[0])->Text, "Title");
  EXPECT_EQ(GetAttribute<TCaptionAttribute>(GetPropInfo(TItem::StaticClass(), "Caption")), attributes[0]);
  EXPECT_TRUE(type->GetProperty("Width")->GetAttributes().empty());
  EXPECT_FALSE(type->GetProperty("Width")->HasAttribute<TCaptionAttribute>());
  EXPECT_EQ(type->GetProperty("Nope"), nullptr);
}

}  // namespace
}  // namespace orv::typinfo_test
