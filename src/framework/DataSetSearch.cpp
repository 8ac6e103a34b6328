// TDataSet: searching. The find operations go through FindRecord, which a descendant that can
// search implements (with its filter, OnFilterRecord, applied to the search); Locate and Lookup
// find nothing until a descendant implements them.

#include "DataSet.h"

namespace orv {

bool TDataSet::FindFirst() { return FindRecord(true, true); }
bool TDataSet::FindLast() { return FindRecord(true, false); }
bool TDataSet::FindNext() { return FindRecord(false, true); }
bool TDataSet::FindPrior() { return FindRecord(false, false); }

bool TDataSet::FindRecord(bool, bool) { return false; }

bool TDataSet::Locate(const String&, const Variant&, TLocateOptions) { return false; }

Variant TDataSet::Lookup(const String&, const Variant&, const String&) { return Null(); }

}  // namespace orv
