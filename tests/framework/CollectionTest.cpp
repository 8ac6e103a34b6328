#include <gtest/gtest.h>

#include "Collections.h"
#include "Components.h"

namespace orv::collection_test {

class TColumn : public TCollectionItem {
  ORV_CLASS(TColumn, TCollectionItem)
 public:
  TColumn() = default;
  const String& GetTitle() const { return FTitle; }
  void SetTitle(const String& value) {
    FTitle = value;
    Changed(false);
  }
  String GetDisplayName() const override { return FTitle.empty() ? TCollectionItem::GetDisplayName() : FTitle; }
  void Assign(TPersistent* source) override {
    if (auto* column = dynamic_cast<TColumn*>(source)) return SetTitle(column->FTitle);
    TCollectionItem::Assign(source);
  }

 private:
  String FTitle;
};

// Logs what the collection tells its descendants.
class TColumns : public TOwnedCollection {
  ORV_CLASS(TColumns, TOwnedCollection)
 public:
  explicit TColumns(TPersistent* owner) : TOwnedCollection(owner, TColumn::StaticClass()) {}
  TColumn* Add(const String& title) {
    auto* column = static_cast<TColumn*>(TCollection::Add());
    column->SetTitle(title);
    return column;
  }
  String Titles() const {
    String titles;
    for (int i = 0; i < GetCount(); ++i) titles += static_cast<TColumn*>(GetItem(i))->GetTitle();
    return titles;
  }
  std::vector<String> Log;

 protected:
  void Update(TCollectionItem* item) override {
    Log.push_back(item ? "update " + item->GetDisplayName() : "update all");
  }
  void Notify(TCollectionItem* item, TCollectionNotification action) override {
    Log.push_back(GetEnumName(TypeInfo<TCollectionNotification>(), action) + " " + std::to_string(item->GetID()));
  }
};

class TGrid : public TComponent {
  ORV_CLASS(TGrid, TComponent)
 public:
  explicit TGrid(TComponent* owner = nullptr) : TComponent(owner) {}
  TColumns* GetColumns() const { return FColumns.get(); }

 private:
  std::unique_ptr<TColumns> FColumns = std::make_unique<TColumns>(this);
};

ORV_PUBLISH(TColumn) { p.Property("Title", &TColumn::GetTitle, &TColumn::SetTitle); }
ORV_IMPLEMENT_CLASS(TColumns)
ORV_PUBLISH(TGrid) { p.Property("Columns", &TGrid::GetColumns); }

namespace {

template <class E, class F>
void ExpectError(F action, const char* message) {
  try {
    action();
    ADD_FAILURE() << "no exception, expected: " << message;
  } catch (const E& e) {
    EXPECT_EQ(e.Message(), message);
  }
}

TEST(Collections, AddInsertDeleteAndMoveItems) {
  TGrid grid;
  grid.SetName("Grid1");
  TColumns& columns = *grid.GetColumns();
  columns.Add("A");
  columns.Add("B");
  TColumn* c = columns.Add("C");
  static_cast<TColumn*>(columns.Insert(1))->SetTitle("D");
  EXPECT_EQ(columns.Titles(), "ADBC");
  EXPECT_EQ(columns.GetItem(1)->GetID(), 3);

  c->SetIndex(0);
  EXPECT_EQ(columns.Titles(), "CADB");
  c->SetIndex(2);
  EXPECT_EQ(columns.Titles(), "ADCB");
  EXPECT_EQ(columns.FindItemID(2), c);  // IDs stay with their items
  EXPECT_EQ(columns.FindItemID(9), nullptr);
  ExpectError<EListError>([&] { c->SetIndex(4); }, "List index out of bounds (4)");
  EXPECT_EQ(columns.Titles(), "ADCB");
  EXPECT_EQ(c->GetNamePath(), "Grid1.Columns[2]");

  columns.Log.clear();
  columns.Delete(0);
  EXPECT_EQ(columns.Log, (std::vector<String>{"cnDeleting 0", "cnExtracting 0", "update all"}));
  delete columns.GetItem(0);  // an item freed by itself leaves the collection
  EXPECT_EQ(columns.Titles(), "CB");
  ExpectError<EListError>([&] { columns.GetItem(2); }, "List index out of bounds (2)");

  TColumns other(nullptr);
  c->SetCollection(&other);  // moves, and the other collection owns it now
  EXPECT_EQ(columns.Titles(), "B");
  EXPECT_EQ(other.Titles(), "C");
  EXPECT_EQ(c->GetNamePath(), "TColumns[0]");

  TCollection wrong(TPersistent::StaticClass());
  ExpectError<EListError>([&] { wrong.Add(); }, "Invalid property value");
  EXPECT_EQ(wrong.GetCount(), 0);
}

TEST(Collections, UpdateOncePerOutermostEndUpdate) {
  TColumns columns(nullptr);
  columns.Add("A")->SetTitle("A2");
  EXPECT_EQ(columns.Log, (std::vector<String>{"cnAdded 0", "update all", "update A", "update A2"}));

  columns.Log.clear();
  columns.BeginUpdate();
  columns.BeginUpdate();
  columns.Add("B");
  static_cast<TColumn*>(columns.GetItem(0))->SetTitle("A3");
  columns.GetItem(1)->SetIndex(0);
  columns.EndUpdate();
  EXPECT_EQ(columns.Log, (std::vector<String>{"cnAdded 1"}));
  columns.EndUpdate();
  EXPECT_EQ(columns.Log, (std::vector<String>{"cnAdded 1", "update all"}));

  columns.Log.clear();
  columns.Clear();
  EXPECT_EQ(columns.Log, (std::vector<String>{"cnExtracting 0", "cnExtracting 1", "update all"}));
  EXPECT_EQ(columns.GetUpdateCount(), 0);
}

TEST(Collections, AssignReplacesItemsOneByOne) {
  TColumns source(nullptr), target(nullptr);
  source.Add("X");
  source.Add("Y");
  target.Add("P");
  target.Log.clear();
  target.Assign(&source);
  EXPECT_EQ(target.Titles(), "XY");
  EXPECT_EQ(target.GetItem(0)->GetID(), 1);
  EXPECT_EQ(std::count(target.Log.begin(), target.Log.end(), "update all"), 1);
  EXPECT_EQ(target.Log.back(), "update all");

  TGrid grid;
  ExpectError<EConvertError>([&] { target.Assign(&grid); }, "Cannot assign a TGrid to a TColumns");
  EXPECT_EQ(target.Titles(), "XY");
}

}  // namespace
}  // namespace orv::collection_test
