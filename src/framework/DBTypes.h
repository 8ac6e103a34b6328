#pragma once
// The enumerations, buffer types and event types of the data-set framework.

#include <functional>

#include "System.h"
#include "TypInfo.h"
#include "Variants.h"

namespace orv {

class TDataSet;
class TField;
class TDataSource;
class TDataLink;

ORV_ENUM(TDataSetState, dsInactive, dsBrowse, dsEdit, dsInsert, dsSetKey, dsCalcFields, dsFilter,
         dsNewValue, dsOldValue, dsCurValue, dsBlockRead, dsInternalCalc, dsOpening)

// In the platform's order: the ordinal values are part of the form-file and packet formats.
ORV_ENUM(TFieldType, ftUnknown, ftString, ftSmallint, ftInteger, ftWord, ftBoolean, ftFloat,
         ftCurrency, ftBCD, ftDate, ftTime, ftDateTime, ftBytes, ftVarBytes, ftAutoInc, ftBlob,
         ftMemo, ftGraphic, ftFmtMemo, ftParadoxOle, ftDBaseOle, ftTypedBinary, ftCursor,
         ftFixedChar, ftWideString, ftLargeint, ftADT, ftArray, ftReference, ftDataSet, ftOraBlob,
         ftOraClob, ftVariant, ftInterface, ftIDispatch, ftGuid, ftTimeStamp, ftFMTBcd,
         ftFixedWideChar, ftWideMemo, ftOraTimeStamp, ftOraInterval, ftLongWord, ftShortint,
         ftByte, ftExtended, ftConnection, ftParams, ftStream, ftTimeStampOffset, ftObject,
         ftSingle)

// The framework's name of a data type: "String", "SmallInt", "ADT", "DataSet" ...
const char* FieldTypeName(TFieldType type);

ORV_ENUM(TFieldKind, fkData, fkCalculated, fkLookup, fkInternalCalc, fkAggregate)
using TFieldKinds = TSet<TFieldKind>;

ORV_ENUM(TDataEvent, deFieldChange, deRecordChange, deDataSetChange, deDataSetScroll,
         deLayoutChange, deUpdateRecord, deUpdateState, deCheckBrowseMode, dePropertyChange,
         deFieldListChange, deFocusControl, deParentScroll, deConnectChange, deReconcileError,
         deDisabledStateChange)

ORV_ENUM(TGetMode, gmCurrent, gmNext, gmPrior)
ORV_ENUM(TGetResult, grOK, grBOF, grEOF, grError)
ORV_ENUM(TBookmarkFlag, bfCurrent, bfBOF, bfEOF, bfInserted)

ORV_ENUM(TResyncModeItem, rmExact, rmCenter)
using TResyncMode = TSet<TResyncModeItem>;

ORV_ENUM(TLocateOption, loCaseInsensitive, loPartialKey)
using TLocateOptions = TSet<TLocateOption>;

ORV_ENUM(TFilterOption, foCaseInsensitive, foNoPartialCompare)
using TFilterOptions = TSet<TFilterOption>;

ORV_ENUM(TDataAction, daFail, daAbort, daRetry)
ORV_ENUM(TBlobStreamMode, bmRead, bmWrite, bmReadWrite)

// The framework's own attributes take bits 0 to 5. The enumeration's values span bits 0 to 7,
// so a set holds bits 6 and 7 as well: static_cast<TFieldAttribute>(6) is a valid element (the
// library's hidden marker) that the framework keeps and copies but gives no name, so a form
// file does not write it.
ORV_ENUM(TFieldAttribute, faHiddenCol, faReadonly, faRequired, faLink, faUnNamed, faFixed)
using TFieldAttributes = TSet<TFieldAttribute>;

ORV_ENUM(TProviderFlag, pfInUpdate, pfInWhere, pfInKey, pfHidden, pfRefreshOnInsert,
         pfRefreshOnUpdate)
using TProviderFlags = TSet<TProviderFlag>;

ORV_ENUM(TAlignment, taLeftJustify, taRightJustify, taCenter)

// What a blob field shows: its class description, its text, its text clipped with "...", or its
// text when it fits the display width and the description otherwise.
ORV_ENUM(TBlobDisplayValue, dvClass, dvFull, dvClip, dvFit)

// A record buffer: memory the data set allocates and lays out as it likes.
using TRecordBuffer = uint8_t*;
// The byte-array form of a field value buffer.
using TValueBuffer = TBytes;
// A bookmark: bytes that only the data set that made it understands; empty is no bookmark.
using TBookmark = TBytes;

// Events of data sets, sender first, in-out parameters as references.
using TDataSetNotifyEvent = std::function<void(TDataSet* DataSet)>;
using TDataSetErrorEvent =
    std::function<void(TDataSet* DataSet, EDatabaseError& E, TDataAction& Action)>;
using TFilterRecordEvent = std::function<void(TDataSet* DataSet, bool& Accept)>;

// Events of fields.
using TFieldNotifyEvent = std::function<void(TField* Sender)>;
using TFieldGetTextEvent = std::function<void(TField* Sender, String& Text, bool DisplayText)>;
using TFieldSetTextEvent = std::function<void(TField* Sender, const String& Text)>;

using TDataChangeEvent = std::function<void(TObject* Sender, TField* Field)>;

}  // namespace orv
