#pragma once
// The framework's standard messages. Those with %s or %d are formats for DatabaseErrorFmt.

namespace orv {

inline constexpr const char* SFieldNotFound = "Field '%s' not found";
inline constexpr const char* SDataSetOpen = "Cannot perform this operation on an open dataset";
inline constexpr const char* SDataSetClosed = "Cannot perform this operation on a closed dataset";
inline constexpr const char* SDataSetEmpty = "Cannot perform this operation on an empty dataset";
inline constexpr const char* SDataSetReadOnly = "Cannot modify a read-only dataset";
inline constexpr const char* SNotEditing = "Dataset not in edit or insert mode";
inline constexpr const char* SFieldReadOnly = "Field '%s' cannot be modified";
inline constexpr const char* SFieldRequired = "Field '%s' must have a value";
inline constexpr const char* SUnknownFieldType = "Field '%s' is of an unknown type";
inline constexpr const char* SCircularDataLink = "Circular datalinks are not allowed";
inline constexpr const char* SFieldTypeMismatch =
    "Type mismatch for field '%s', expecting: %s actual: %s";
inline constexpr const char* SFieldAccessError = "Cannot access field '%s' as type %s";
inline constexpr const char* SDuplicateFieldName = "Duplicate field name '%s'";
inline constexpr const char* SFieldNameMissing = "Field name missing";
inline constexpr const char* SFieldIndexError = "Field index out of range";
inline constexpr const char* SInvalidFieldSize = "Invalid field size";
inline constexpr const char* SInvalidFieldKind = "Invalid FieldKind";
inline constexpr const char* SInvalidIntegerValue = "'%s' is not a valid integer value for field '%s'";
inline constexpr const char* SInvalidFloatValue =
    "'%s' is not a valid floating point value for field '%s'";
inline constexpr const char* SInvalidBoolValue = "'%s' is not a valid boolean value for field '%s'";
inline constexpr const char* SFieldOutOfRange = "Value of field '%s' is out of range";
inline constexpr const char* SFieldRangeError =
    "%g is not a valid value for field '%s'. The allowed range is %g to %g";
inline constexpr const char* SInvalidVarByteArray = "Invalid variant type or size for field '%s'";
inline constexpr const char* SLookupInfoError = "Lookup information for field '%s' is incomplete";
inline constexpr const char* SDataSetMissing = "Field '%s' has no dataset";
inline constexpr const char* SInvalidCalcType = "Field '%s' cannot be a calculated or lookup field";
inline constexpr const char* SFieldDefNotFound = "Field definition '%s' not found";
inline constexpr const char* SRecordNotFound = "Record not found";
inline constexpr const char* SDataSourceChange = "DataSource cannot be changed";
inline constexpr const char* SNoNestedMasterSource = "Nested datasets cannot have a MasterSource";
inline constexpr const char* SDataSetUnidirectional = "Operation not allowed on a unidirectional dataset";
inline constexpr const char* SNestedDataSetClass = "Nested dataset must inherit from %s";
inline constexpr const char* SFieldSizeMismatch =
    "Size mismatch for field '%s', expecting: %d actual: %d";
inline constexpr const char* SBcdFieldRangeError =
    "%s is not a valid value for field '%s'. The allowed range is %s to %s";
inline constexpr const char* SNotIndexField = "Field '%s' is not indexed and cannot be modified";
inline constexpr const char* SRecordChanged = "Record not found or changed by another user";

// Fields and field definitions.
inline constexpr const char* STextTrue = "True";
inline constexpr const char* STextFalse = "False";
inline constexpr const char* SDuplicateName = "Duplicate name '%s' in %s";
inline constexpr const char* SFieldValueError = "Invalid value for field '%s'";
inline constexpr const char* SBCDOverflow = "(Overflow)";

}  // namespace orv
