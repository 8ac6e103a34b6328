#pragma once
// The layout of a record buffer of the engine: a header with the cursor position the buffer was
// fetched at (which is also its whole 4-byte bookmark) and its bookmark flag, then one Variant
// per entry of the data set's FieldList (sub-fields of object fields included), in its order. A
// slot that is Unassigned has not been asked for yet; Null means the field has no value.

#include <cstddef>
#include <cstdint>
#include <new>

#include "DB.h"

namespace orv {

struct TORVRecordHeader {
  int32_t RecordNumber;
  uint8_t BookmarkFlag;  // a TBookmarkFlag
};

// Where the value slots begin: the header rounded up to the alignment of a Variant.
inline constexpr size_t ORVSlotsOffset =
    (sizeof(TORVRecordHeader) + alignof(Variant) - 1) / alignof(Variant) * alignof(Variant);

// The size of a buffer with `SlotCount` value slots.
constexpr int32_t ORVRecordSize(int32_t SlotCount) {
  return static_cast<int32_t>(ORVSlotsOffset + static_cast<size_t>(SlotCount) * sizeof(Variant));
}

// The number of value slots of a buffer of `RecordSize` bytes.
constexpr int32_t ORVSlotCount(int32_t RecordSize) {
  return RecordSize <= static_cast<int32_t>(ORVSlotsOffset)
             ? 0
             : static_cast<int32_t>((static_cast<size_t>(RecordSize) - ORVSlotsOffset) /
                                    sizeof(Variant));
}

inline TORVRecordHeader& RecordHeader(TRecordBuffer Buffer) {
  return *std::launder(reinterpret_cast<TORVRecordHeader*>(Buffer));
}

inline Variant* RecordSlots(TRecordBuffer Buffer) {
  return std::launder(reinterpret_cast<Variant*>(Buffer + ORVSlotsOffset));
}

}  // namespace orv
