// Field definitions, the flat lists of definitions and fields, and the fields of a data set by
// name.

#include <algorithm>

#include "FieldTestSupport.h"

namespace orv::test {
namespace {

constexpr auto HiddenMarker = static_cast<TFieldAttribute>(6);

// Counts the rebuilds of the definitions and the changes the definitions report.
class TCountingDataSet : public TTestDataSet {
  ORV_CLASS(TCountingDataSet, TTestDataSet)
 public:
  using TTestDataSet::TTestDataSet;
  int InitCount = 0;
  int ChangeCount = 0;

 protected:
  void InternalInitFieldDefs() override {
    ++InitCount;
    TTestDataSet::InternalInitFieldDefs();
  }
  void DefChanged(TObject*) override { ++ChangeCount; }
};

// A field list that keeps its own index of field objects, as an engine's list does: sorted by
// address, rebuilt only when the framework rebuilds the list.
class TSortedFieldList : public TFieldList {
  ORV_CLASS(TSortedFieldList, TFieldList)
 public:
  using TFieldList::TFieldList;
  int Rebuilds = 0;

  int32_t IndexOfObject(TObject* Object) const override {
    GetCount();  // brings the list up to date first
    auto it =
        std::lower_bound(FSorted.begin(), FSorted.end(), Object,
                         [](const auto& item, TObject* object) { return item.first < object; });
    return it != FSorted.end() && it->first == Object ? it->second : -1;
  }

 protected:
  void UpdateList() override {
    TFieldList::UpdateList();
    ++Rebuilds;
    SetUpdated(true);  // reading the count must not start another rebuild
    const int count = GetCount();
    SetUpdated(false);
    FSorted.clear();
    for (int i = 0; i < count; ++i) FSorted.emplace_back(GetObject(i), i);
    std::sort(FSorted.begin(), FSorted.end());
  }

 private:
  std::vector<std::pair<TObject*, int>> FSorted;
};

class TSortedListDataSet : public TTestDataSet {
  ORV_CLASS(TSortedListDataSet, TTestDataSet)
 public:
  using TTestDataSet::TTestDataSet;

 protected:
  TClass GetFieldListClass() const override { return TSortedFieldList::StaticClass(); }
};

ORV_IMPLEMENT_CLASS(TCountingDataSet)
ORV_IMPLEMENT_CLASS(TSortedFieldList)
ORV_IMPLEMENT_CLASS(TSortedListDataSet)

TEST(FieldDefs, ChildDefinitionsAttributesAndTheHiddenMarker) {
  TTestDataSet dataSet;
  TFieldDefs* defs = dataSet.GetFieldDefs();
  defs->Add("ID", ftInteger, 0, true);
  TFieldDef* address = defs->AddFieldDef();
  address->SetName("Address");
  address->SetDataType(ftADT);
  TFieldDef* city = address->AddChild();
  city->SetName("City");
  city->SetDataType(ftString);
  city->SetSize(30);
  city->SetAttributes(TFieldAttributes{faReadonly}.Include(HiddenMarker));

  EXPECT_EQ(defs->GetItem(0)->GetFieldNo(), 1);
  EXPECT_TRUE(defs->GetItem(0)->GetRequired());
  EXPECT_EQ(city->GetParentDef(), address);
  EXPECT_EQ(city->GetFieldDefs()->GetDataSet(), &dataSet);
  EXPECT_TRUE(city->GetAttributes().Contains(HiddenMarker));
  EXPECT_EQ(city->GetAttributes().Ordinal(), 0b1000010u);
  // A form file names only the framework's own attributes.
  EXPECT_EQ(GetSetProp(city, "Attributes"), "faReadonly");

  // Copies keep children, attributes and the marker.
  TTestDataSet copy;
  copy.SetFieldDefs(defs);
  TFieldDef* copiedCity = copy.GetFieldDefs()->Find("address")->GetChildDefs()->Find("CITY");
  EXPECT_EQ(copiedCity->GetSize(), 30);
  EXPECT_EQ(copiedCity->GetAttributes(), city->GetAttributes());

  ExpectMessage([&] { defs->Find("Nope"); }, "Field 'Nope' not found");
  ExpectMessage([&] { defs->Add("id", ftString); }, "Duplicate name 'id' in TFieldDefs");
  EXPECT_EQ(defs->GetCount(), 2);
  ExpectMessage([&] { defs->Add("", ftString); }, "Field name missing");

  // The field of a definition: its class, settings and sub-fields.
  TField* made = address->CreateField(&dataSet);
  EXPECT_EQ(made->ClassName(), "TADTField");
  TField* madeCity = static_cast<TADTField*>(made)->GetFields()->FieldByName("City");
  EXPECT_EQ(madeCity->GetSize(), 30);
  EXPECT_TRUE(madeCity->GetReadOnly());
  EXPECT_EQ(madeCity->GetFullName(), "Address.City");
  EXPECT_EQ(dataSet.GetFieldCount(), 1);

  // A type without a field class leaves nothing behind.
  TFieldDef* cursor = defs->AddFieldDef();
  cursor->SetName("Cursor");
  cursor->SetDataType(ftCursor);
  const int components = dataSet.GetComponentCount();
  ExpectMessage([&] { cursor->CreateField(&dataSet); }, "Field 'Cursor' is of an unknown type");
  EXPECT_EQ(dataSet.GetComponentCount(), components);
}

TEST(FieldDefs, UpToDateFlagAndTheFlatDefinitionList) {
  TCountingDataSet dataSet;
  TFieldDefs* defs = dataSet.GetFieldDefs();
  defs->Add("ID", ftInteger);
  EXPECT_FALSE(defs->GetUpdated());
  EXPECT_EQ(dataSet.ChangeCount, 1);

  // Updating rebuilds once, from an open cursor opened for the purpose; the rebuild itself is
  // no outside change.
  defs->Update();
  defs->Update();
  EXPECT_EQ(dataSet.InitCount, 1);
  EXPECT_TRUE(defs->GetUpdated());
  EXPECT_EQ(dataSet.ChangeCount, 1);

  // A change from outside makes them out of date, and the flat list follows them.
  TFieldDefList* list = dataSet.GetFieldDefList();
  EXPECT_EQ(list->GetCount(), 1);
  TFieldDef* parts = defs->AddFieldDef();
  parts->SetName("Parts");
  parts->SetDataType(ftArray);
  parts->SetSize(2);
  parts->GetChildDefs()->Add("Part", ftADT);
  parts->GetChildDefs()->GetItem(0)->GetChildDefs()->Add("No", ftInteger);
  EXPECT_FALSE(defs->GetUpdated());
  EXPECT_GT(dataSet.ChangeCount, 1);
  EXPECT_EQ(list->ToStringArray(), (std::vector<String>{"ID", "Parts", "Parts[0]", "Parts[0].No",
                                                        "Parts[1]", "Parts[1].No"}));
  EXPECT_EQ(list->FieldByName("parts[1].NO"),
            parts->GetChildDefs()->GetItem(0)->GetChildDefs()->GetItem(0));
  EXPECT_EQ(list->Find("Parts.No"), nullptr);
  // A child's change is its parent's: the list follows it and the data set hears of it.
  const int changes = dataSet.ChangeCount;
  parts->GetChildDefs()->GetItem(0)->GetChildDefs()->GetItem(0)->SetName("Num");
  EXPECT_EQ(dataSet.ChangeCount, changes + 1);
  EXPECT_NE(list->Find("Parts[1].Num"), nullptr);
  EXPECT_EQ(list->IndexOf("Parts[0].No"), -1);
  ExpectMessage([&] { list->FieldByName("Other"); }, "Field 'Other' not found");
  ExpectMessage([&] { list->Add("Sneaked in"); },
                "Cannot modify a flat list of fields or definitions");
}

TEST(FieldLists, RebuiltOnDemandAndASubclassKeepsItsOwnIndex) {
  TSortedListDataSet dataSet;
  dataSet.GetFieldDefs()->Add("ID", ftInteger);
  TFieldDef* address = dataSet.GetFieldDefs()->AddFieldDef();
  address->SetName("Address");
  address->SetDataType(ftADT);
  address->GetChildDefs()->Add("City", ftString, 10);
  dataSet.AddRow({1, Null(), String("Rome")});
  dataSet.SetObjectView(true);
  for (int i = 0; i < dataSet.GetFieldDefs()->GetCount(); ++i)  // persistent fields stay
    dataSet.GetFieldDefs()->GetItem(i)->CreateField(&dataSet);
  dataSet.Open();

  auto* list = static_cast<TSortedFieldList*>(dataSet.GetFieldList());
  EXPECT_EQ(list->ClassName(), "TSortedFieldList");
  TField* city = list->FieldByName("ADDRESS.city");
  EXPECT_EQ(city->GetAsString(), "Rome");
  const int rebuilds = list->Rebuilds;
  EXPECT_GE(rebuilds, 1);
  EXPECT_EQ(list->IndexOfObject(city), 2);
  EXPECT_EQ(list->IndexOfObject(dataSet.FieldByName("ID")), 0);
  EXPECT_EQ(list->IndexOfObject(&dataSet), -1);
  EXPECT_EQ(list->Rebuilds, rebuilds);  // lookups do not rebuild

  // Fields change only while the data set is closed; the list rebuilds when next used.
  dataSet.Close();
  auto* note = new TStringField(&dataSet);
  note->SetFieldName("Note");
  note->SetFieldKind(fkCalculated);
  note->SetDataSet(&dataSet);
  EXPECT_EQ(list->GetField(list->GetCount() - 1), note);
  EXPECT_EQ(list->Rebuilds, rebuilds + 1);
  EXPECT_EQ(list->IndexOfObject(note), 3);
}

TEST(FieldLists, FieldsByNameFollowRenamesOrderAndFreeing) {
  auto dataSet = MakeDataSet({{"ID", ftInteger}, {"\u00C4rger", ftString}});  // "Ärger"
  dataSet->SetName("Trouble");
  for (int i = 0; i < dataSet->GetFieldDefs()->GetCount(); ++i)
    dataSet->GetFieldDefs()->GetItem(i)->CreateField(dataSet.get());
  TFields* fields = dataSet->GetFields();
  TField* id = fields->FindField("id");
  ASSERT_NE(id, nullptr);
  EXPECT_EQ(fields->FindField("\u00E4rger"), fields->GetField(1));  // "ärger": the locale's case

  id->SetFieldName("Key");
  EXPECT_EQ(fields->FindField("ID"), nullptr);
  EXPECT_EQ(fields->FindField("KEY"), id);
  id->SetIndex(5);  // clamped to the last place
  EXPECT_EQ(fields->IndexOf(id), 1);
  EXPECT_EQ(fields->GetField(0)->GetFieldName(), "\u00C4rger");

  TIntegerField other(nullptr);
  other.SetFieldName("key");
  ExpectMessage([&] { other.SetDataSet(dataSet.get()); }, "Trouble: Duplicate field name 'key'");
  other.SetFieldName("");
  ExpectMessage([&] { other.SetDataSet(dataSet.get()); }, "Trouble: Field name missing");
  ExpectMessage([&] { fields->FieldByName("Nope"); }, "Trouble: Field 'Nope' not found");
  ExpectMessage([&] { fields->GetField(2); }, "Trouble: Field index out of range");
  ExpectMessage([&] { fields->CheckFieldNames("Key;Nope"); }, "Trouble: Field 'Nope' not found");

  delete id;  // a field freed on its own leaves its list
  EXPECT_EQ(fields->GetCount(), 1);
  EXPECT_EQ(fields->FindField("Key"), nullptr);
}

TEST(FieldProperties, PublishedForFormFilesWithTheirDefaults) {
  TComponent owner;
  auto* field = static_cast<TField*>(CreateComponent(TIntegerField::StaticClass(), owner));
  EXPECT_EQ(field->GetOwner(), &owner);
  field->SetFieldName("Total");

  std::vector<String> names;
  for (PPropInfo info : GetPropList(field)) names.push_back(info->Name);
  for (const char* name :
       {"FieldName", "DisplayLabel", "DisplayWidth", "Visible", "ReadOnly", "Required", "Alignment",
        "Index", "FieldKind", "KeyFields", "LookupDataSet", "LookupCache", "DisplayFormat",
        "EditFormat", "MinValue", "MaxValue", "OnValidate", "OnGetText"})
    EXPECT_NE(std::find(names.begin(), names.end(), name), names.end()) << name;

  // Only what differs from the default is stored.
  EXPECT_FALSE(IsStoredProp(field, "DisplayLabel"));
  SetStrProp(field, "DisplayLabel", "Total");  // the field name itself is no label
  EXPECT_FALSE(IsStoredProp(field, "DisplayLabel"));
  SetStrProp(field, "DisplayLabel", "Sum");
  EXPECT_TRUE(IsStoredProp(field, "DisplayLabel"));
  EXPECT_EQ(field->GetDisplayName(), "Sum");
  EXPECT_FALSE(IsStoredProp(field, "DisplayWidth"));
  EXPECT_EQ(field->GetDisplayWidth(), 10);
  EXPECT_EQ(GetEnumProp(field, "Alignment"), "taRightJustify");
  EXPECT_TRUE(IsDefaultPropValue(field, FindPropInfo(field, "Alignment")));
  EXPECT_FALSE(IsStoredProp(field, "Index"));

  TStringField text(nullptr);
  EXPECT_TRUE(IsDefaultPropValue(&text, FindPropInfo(&text, "Size")));
  EXPECT_EQ(text.GetSize(), 20);
  SetOrdProp(&text, "Size", 35);
  EXPECT_EQ(text.GetDisplayWidth(), 35);
  TGraphicField graphic(nullptr);
  EXPECT_EQ(GetEnumProp(&graphic, "BlobType"), "ftGraphic");
  EXPECT_TRUE(IsDefaultPropValue(&graphic, FindPropInfo(&graphic, "BlobType")));
  ExpectMessage([&] { SetOrdProp(&text, "Size", -1); }, "Invalid field size");
  RegisterFieldClasses();  // form files make fields by class name
  EXPECT_EQ(GetClass("tfmtbcdfield"), TFMTBCDField::StaticClass());
  EXPECT_EQ(String(FieldTypeName(ftFMTBcd)), "FMTBcd");
  EXPECT_EQ(DefaultFieldClass(ftOraClob), TMemoField::StaticClass());
  EXPECT_EQ(DefaultFieldClass(ftCursor), nullptr);
}

}  // namespace
}  // namespace orv::test
