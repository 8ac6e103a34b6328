// A virtual data set over the application's own vector: the data set holds no records; it asks
// for the count once when it opens and for each value the first time it is read, and hands
// inserts, edits and deletes back to the application when they are posted.
#include <iomanip>
#include <iostream>

#include "ORVData.h"
#include "SysUtils.h"

using namespace orv;

struct Customer {
  String Name;
  String City;
  double Balance;
};

namespace {

void Print(TORVData& data, const char* title) {
  std::cout << title << '\n';
  for (data.First(); !data.GetEOF(); data.Next()) {
    std::cout << "  " << std::setw(2) << data.GetRecNo() << "  " << std::left << std::setw(8)
              << data.FieldByName("Name")->GetAsString() << std::setw(10)
              << data.FieldByName("City")->GetAsString() << std::right << std::setw(8)
              << data.FieldByName("Balance")->GetDisplayText() << '\n';
  }
}

}  // namespace

int main() {
  FormatSettings = TFormatSettings::Invariant();
  std::vector<Customer> customers = {{"Smith", "Boston", 120.5},
                                     {"Jones", "Austin", 75},
                                     {"Brown", "Boston", 310.25},
                                     {"Adams", "Denver", 0}};

  TORVData data;
  data.SetName("Customers");
  data.GetFieldDefs()->Add("Name", ftString, 20);
  data.GetFieldDefs()->Add("City", ftString, 20);
  data.GetFieldDefs()->Add("Balance", ftFloat);

  // The application answers the data events through its own container.
  data.SetOnCountRecords([&](TDataSet*, int32_t& Count) { Count = int32_t(customers.size()); });
  data.SetOnGetFieldData([&](TDataSet*, int32_t Index, TField* Field, Variant& Data) {
    const Customer& c = customers[Index];
    const String& name = Field->GetFieldName();
    Data = name == "Name" ? Variant(c.Name) : name == "City" ? Variant(c.City) : Variant(c.Balance);
  });
  data.SetOnSetFieldData([&](TDataSet*, int32_t Index, TField* Field, const Variant& Data) {
    Customer& c = customers[Index];
    const String& name = Field->GetFieldName();
    if (name == "Name") c.Name = VarToStr(Data);
    else if (name == "City") c.City = VarToStr(Data);
    else c.Balance = VarIsNull(Data) ? 0 : Data.AsDouble();
  });
  data.SetOnInsertRecord([&](TDataSet*, int32_t Index) {
    customers.insert(customers.begin() + Index, Customer{});
  });
  data.SetOnDeleteRecord([&](TDataSet*, int32_t Index) {
    customers.erase(customers.begin() + Index);
  });

  data.Open();
  Print(data, "As the vector holds them:");

  data.SetIndexFieldNames("City;Balance DESC");
  Print(data, "Sorted by city, then balance descending:");

  data.Append();
  data.FieldByName("Name")->SetAsString("Clark");
  data.FieldByName("City")->SetAsString("Austin");
  data.FieldByName("Balance")->SetEditText("99.9");
  data.Post();
  Print(data, "After appending Clark (the sort keeps the new record in its place):");

  data.SetIndexFieldNames("");
  Print(data, "The vector now holds:");
  data.Close();
  return 0;
}
