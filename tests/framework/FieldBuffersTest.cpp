// Fields whose buffers hold objects or raw bytes: variants, interfaces, blobs and memos, byte
// fields. The objects are assigned, never copied as bytes: reference counts come back where
// they started and the sanitizer sees no leak.

#include "FieldTestSupport.h"

namespace orv::test {
namespace {

class TCounted : public TInterfacedObject {};

TEST(FieldBuffers, VariantAndInterfaceFieldsHoldTheirObjects) {
  auto dataSet = MakeDataSet({{"Any", ftVariant}, {"Intf", ftInterface}, {"Disp", ftIDispatch}},
                             {{String("text"), Null(), Null()}});
  dataSet->Open();
  auto* any = static_cast<TVariantField*>(dataSet->FieldByName("Any"));
  auto* intf = static_cast<TInterfaceField*>(dataSet->FieldByName("Intf"));
  EXPECT_EQ(any->GetAsString(), "text");
  EXPECT_TRUE(intf->GetIsNull());
  EXPECT_FALSE(intf->GetInterface());

  auto* counted = new TCounted;
  IInterfacePtr held(counted);  // frees it at the end of the test
  {
    dataSet->Edit();
    any->SetValue(VarArrayOf({1, String("two")}));
    intf->SetInterface(held);
    ExpectMessage<EInvalidCast>(
        [&] { static_cast<TInterfaceField*>(dataSet->FieldByName("Disp"))->SetInterface(held); },
        "Interface not supported");
    dataSet->Post();
    const Variant array = any->GetValue();
    EXPECT_EQ(VarArrayGet(array, {1}), Variant(String("two")));
    EXPECT_EQ(intf->GetInterface().get(), held.get());
    EXPECT_EQ(VarType(intf->GetValue()), varUnknown);

    dataSet->Edit();
    any->SetAsInteger(5);
    EXPECT_EQ(any->GetAsString(), "5");
    EXPECT_EQ(VarType(any->GetValue()), varInteger);
    any->SetAsFloat(2.5);
    EXPECT_EQ(any->GetAsInteger(), 2);  // the Variant's coercion rounds half to even
    intf->Clear();
    dataSet->Post();
    EXPECT_TRUE(intf->GetIsNull());
  }
  dataSet->Close();
  EXPECT_EQ(counted->RefCount(), 1);  // only `held`
}

TEST(FieldBuffers, BlobsAndMemosKeepTheShapeOfTheirType) {
  auto dataSet =
      MakeDataSet({{"Memo", ftMemo}, {"Wide", ftWideMemo}, {"Blob", ftBlob}, {"Pic", ftGraphic}},
                  {{String("line 1\r\nline 2"), Null(), VarFromBytes({1, 2, 3}), Null()}});
  dataSet->Open();
  auto* memo = static_cast<TBlobField*>(dataSet->FieldByName("Memo"));
  auto* wide = static_cast<TBlobField*>(dataSet->FieldByName("Wide"));
  auto* blob = static_cast<TBlobField*>(dataSet->FieldByName("Blob"));
  EXPECT_EQ(memo->ClassName(), "TMemoField");
  EXPECT_EQ(wide->GetBlobType(), ftWideMemo);
  EXPECT_EQ(dataSet->FieldByName("Pic")->ClassName(), "TGraphicField");

  EXPECT_EQ(memo->GetAsString(), "line 1\r\nline 2");
  EXPECT_EQ(memo->GetBlobSize(), 14);
  EXPECT_EQ(blob->GetAsBytes(), (TBytes{1, 2, 3}));
  EXPECT_EQ(VarType(blob->GetValue()), varArray | varByte);

  // The text shown: the class (upper case when there is a value) unless DisplayValue says more.
  EXPECT_EQ(memo->GetDisplayText(), "(MEMO)");
  EXPECT_EQ(wide->GetDisplayText(), "(WideMemo)");
  EXPECT_EQ(blob->GetEditText(), "(BLOB)");
  memo->SetDisplayWidth(6);
  memo->SetDisplayValue(dvClip);
  EXPECT_EQ(memo->GetDisplayText(), "line 1...");
  EXPECT_EQ(memo->GetEditText(), "line 1\r\nline 2");
  memo->SetDisplayValue(dvFit);
  EXPECT_EQ(memo->GetDisplayText(), "(MEMO)");
  memo->SetDisplayValue(dvFull);
  EXPECT_EQ(memo->GetDisplayText(), "line 1\r\nline 2");

  dataSet->Edit();
  wide->SetAsString("Gr\u00FC\u00DFe");  // "Grüße": stored as UTF-16 text
  TMemoryStream source;
  source.WriteBytes({9, 8, 7, 6});
  blob->LoadFromStream(&source);
  memo->Clear();
  dataSet->Post();
  const auto& row = dataSet->GetTable()->Rows[0];
  EXPECT_EQ(VarType(row[1]) & varTypeMask, varOleStr);
  EXPECT_EQ(row[1].AsWideString(), u"Gr\u00FC\u00DFe");
  EXPECT_EQ(wide->GetAsString(), "Gr\u00FC\u00DFe");
  EXPECT_EQ(wide->GetAsVariant(), Variant(WideString(u"Gr\u00FC\u00DFe")));
  EXPECT_TRUE(memo->GetIsNull());
  EXPECT_TRUE(VarIsNull(memo->GetValue()));
  TMemoryStream saved;
  blob->SaveToStream(&saved);
  saved.SetPosition(0);
  EXPECT_EQ(saved.ReadRemainingBytes(), (TBytes{9, 8, 7, 6}));
}

TEST(FieldBuffers, ByteFieldsHoldRawBytesOfTheirSize) {
  auto dataSet = MakeDataSet({{"Fixed", ftBytes, 4}, {"Var", ftVarBytes, 4}},
                             {{VarFromBytes({1, 2, 3, 4}), VarFromBytes({5})}});
  dataSet->Open();
  TField* fixed = dataSet->FieldByName("Fixed");
  TField* var = dataSet->FieldByName("Var");
  EXPECT_EQ(fixed->GetDataSize(), 4);
  EXPECT_EQ(var->GetDataSize(), 6);
  EXPECT_EQ(var->GetAsBytes(), (TBytes{5}));
  EXPECT_EQ(fixed->GetDisplayText(), "(BYTES)");

  dataSet->Edit();
  fixed->SetAsBytes({9, 8});            // padded to its size
  var->SetAsBytes({1, 2, 3, 4, 5, 6});  // cut to its size
  ExpectMessage([&] { var->SetValue(String("text")); },
                "Invalid variant type or size for field 'Var'");
  ExpectMessage(
      [&] {
        var->SetValue(VarFromBytes({1, 2, 3, 4, 5}));
      },
      "Invalid variant type or size for field 'Var'");
  dataSet->Post();
  EXPECT_EQ(fixed->GetAsBytes(), (TBytes{9, 8, 0, 0}));
  EXPECT_EQ(var->GetAsBytes(), (TBytes{1, 2, 3, 4}));
  EXPECT_EQ(VarToBytes(var->GetValue()), (TBytes{1, 2, 3, 4}));
}

TEST(FieldBuffers, ValueBufferObjectsConstructAndDestroyTheirObject) {
  auto* counted = new TCounted;
  IInterfacePtr held(counted);
  {
    TValueBufferObject<IInterfacePtr> buffer(held);
    EXPECT_EQ(counted->RefCount(), 2);
    EXPECT_EQ(buffer.Buffer().size(), sizeof(IInterfacePtr));
    ValueBufferObject<IInterfacePtr>(buffer.Buffer()) = nullptr;
    EXPECT_EQ(counted->RefCount(), 1);
    ValueBufferObject<IInterfacePtr>(buffer.Buffer()) = held;
  }
  EXPECT_EQ(counted->RefCount(), 1);
  EXPECT_EQ(BufferObjectOf(ftWideMemo), TBufferObject::Variant);
  EXPECT_EQ(BufferObjectOf(ftBytes, false), TBufferObject::Variant);
  EXPECT_EQ(BufferObjectOf(ftBytes, true), TBufferObject::None);
  EXPECT_EQ(BufferObjectOf(ftIDispatch), TBufferObject::Dispatch);
}

}  // namespace
}  // namespace orv::test
