// Variant arrays: creation, bounds, element access, locking, resizing and byte arrays. An
// array's block is shared between copies and copied before a write (copy on write).

#include <limits>

#include "VariantBlocks.h"

namespace orv {

using detail::ArrayBlock;
using detail::ArrayDim;
using detail::VariantAccess;

namespace {

[[noreturn]] void RaiseBadIndex() {
  throw EVariantBadIndexError("Variant or safe array index out of bounds");
}
[[noreturn]] void RaiseCreateError() {
  throw EVariantArrayCreateError("Error creating variant or safe array");
}
[[noreturn]] void RaiseLocked() {
  throw EVariantArrayLockedError("Variant or safe array is locked");
}

// Bytes of one element kept in Raw; 0 for the kinds kept as Variants in Items.
size_t ElementSize(TVarType t) {
  switch (t) {
    case varShortInt: case varByte: return 1;
    case varSmallint: case varWord: case varBoolean: return 2;
    case varInteger: case varLongWord: case varSingle: return 4;
    case varDouble: case varCurrency: case varDate: case varInt64: case varUInt64: return 8;
    default: return 0;
  }
}

bool IsItemKind(TVarType t) {
  return t == varVariant || t == varOleStr || t == varString || t == varUString;
}

Variant EmptyElement(TVarType t) {
  return t == varVariant ? Variant() : VarAsType(Variant(""), t);
}

const ArrayBlock& ArrayOf(const Variant& v) {
  if (!VarIsArray(v)) throw EVariantInvalidArgError("Invalid argument");
  return VariantAccess::Block<ArrayBlock>(v);
}

// Locking and unlocking change no element, so they need no unshared copy of the storage.
ArrayBlock& MutableArrayOf(Variant& v) { return const_cast<ArrayBlock&>(ArrayOf(v)); }

size_t TotalCount(const std::vector<ArrayDim>& dims) {
  size_t total = 1;
  for (const ArrayDim& d : dims) total *= static_cast<size_t>(d.Count);
  return total;
}

// Column-major: the first index varies fastest, so the last dimension can grow in place.
size_t FlatIndex(const ArrayBlock& array, std::span<const int32_t> indices) {
  if (indices.size() != array.Dims.size()) RaiseBadIndex();
  size_t flat = 0, stride = 1;
  for (size_t i = 0; i < indices.size(); ++i) {
    const int64_t offset = int64_t(indices[i]) - array.Dims[i].Low;
    if (offset < 0 || offset >= array.Dims[i].Count) RaiseBadIndex();
    flat += static_cast<size_t>(offset) * stride;
    stride *= static_cast<size_t>(array.Dims[i].Count);
  }
  return flat;
}

template <class T>
T Load(const uint8_t* p) {
  T value;
  std::memcpy(&value, p, sizeof value);
  return value;
}

template <class T>
void Store(uint8_t* p, T value) {
  std::memcpy(p, &value, sizeof value);
}

// `value` already has the element type.
void StoreElement(ArrayBlock& array, size_t flat, Variant&& value) {
  if (IsItemKind(array.ElementType)) {
    array.Items[flat] = std::move(value);
    return;
  }
  uint8_t* p = array.Raw.data() + flat * ElementSize(array.ElementType);
  switch (array.ElementType) {
    case varShortInt: Store(p, value.AsShortInt()); break;
    case varByte: Store(p, value.AsByte()); break;
    case varSmallint: Store(p, value.AsSmallint()); break;
    case varWord: Store(p, value.AsWord()); break;
    case varBoolean: Store(p, int16_t(value.AsBoolean() ? -1 : 0)); break;
    case varInteger: Store(p, value.AsInteger()); break;
    case varLongWord: Store(p, value.AsLongWord()); break;
    case varSingle: Store(p, value.AsSingle()); break;
    case varDouble: Store(p, value.AsDouble()); break;
    case varCurrency: Store(p, value.AsCurrency().Raw()); break;
    case varDate: Store(p, value.AsDateTime().Val); break;
    case varInt64: Store(p, value.AsInt64()); break;
    case varUInt64: Store(p, value.AsUInt64()); break;
    default: break;
  }
}

Variant MakeArray(TVarType elementType, std::vector<ArrayDim> dims) {
  auto block = std::make_unique<ArrayBlock>();
  block->ElementType = elementType;
  block->Dims = std::move(dims);
  const size_t total = TotalCount(block->Dims);
  if (IsItemKind(elementType))
    block->Items.assign(total, EmptyElement(elementType));
  else
    block->Raw.assign(total * ElementSize(elementType), 0);
  return VariantAccess::MakeBlock(varArray | elementType, block.release());
}

}  // namespace

namespace detail {

Variant ArrayElement(const ArrayBlock& array, size_t flat) {
  if (IsItemKind(array.ElementType)) return array.Items[flat];
  const uint8_t* p = array.Raw.data() + flat * ElementSize(array.ElementType);
  switch (array.ElementType) {
    case varShortInt: return Load<int8_t>(p);
    case varByte: return Load<uint8_t>(p);
    case varSmallint: return Load<int16_t>(p);
    case varWord: return Load<uint16_t>(p);
    case varBoolean: return Load<int16_t>(p) != 0;
    case varInteger: return Load<int32_t>(p);
    case varLongWord: return Load<uint32_t>(p);
    case varSingle: return Load<float>(p);
    case varDouble: return Load<double>(p);
    case varCurrency: return Currency::FromRaw(Load<int64_t>(p));
    case varDate: return TDateTime(Load<double>(p));
    case varInt64: return Load<int64_t>(p);
    case varUInt64: return Load<uint64_t>(p);
    default: return Variant();
  }
}

ArrayBlock& VariantAccess::UniqueArray(Variant& v) {
  if (!VarIsArray(v)) throw EVariantInvalidArgError("Invalid argument");
  auto* block = static_cast<ArrayBlock*>(v.FData.Block);
  if (block->RefCount > 1) {
    auto* copy = new ArrayBlock(*block);
    --block->RefCount;
    v.FData.Block = block = copy;
  }
  return *block;
}

}  // namespace detail

// ---------------------------------------------------------------------------------------------
// Creation and bounds

Variant VarArrayCreate(const std::vector<int32_t>& bounds, TVarType elementType) {
  if (bounds.empty() || bounds.size() % 2 != 0) RaiseCreateError();
  if (!IsItemKind(elementType) && ElementSize(elementType) == 0) RaiseCreateError();
  std::vector<ArrayDim> dims;
  int64_t total = 1;
  for (size_t i = 0; i < bounds.size(); i += 2) {
    const int64_t count = int64_t(bounds[i + 1]) - bounds[i] + 1;
    if (count < 0) RaiseCreateError();
    total *= count;
    if (total > std::numeric_limits<int32_t>::max()) RaiseCreateError();
    dims.push_back({bounds[i], static_cast<int32_t>(count)});
  }
  return MakeArray(elementType, std::move(dims));
}

Variant VarArrayOf(const std::vector<Variant>& values) {
  auto block = std::make_unique<ArrayBlock>();
  block->ElementType = varVariant;
  block->Dims = {{0, static_cast<int32_t>(values.size())}};
  block->Items = values;
  return VariantAccess::MakeBlock(varArray | varVariant, block.release());
}

int VarArrayDimCount(const Variant& v) {
  return VarIsArray(v) ? static_cast<int>(ArrayOf(v).Dims.size()) : 0;
}

int32_t VarArrayLowBound(const Variant& v, int dim) {
  const ArrayBlock& array = ArrayOf(v);
  if (dim < 1 || dim > static_cast<int>(array.Dims.size())) RaiseBadIndex();
  return array.Dims[dim - 1].Low;
}

int32_t VarArrayHighBound(const Variant& v, int dim) {
  const ArrayBlock& array = ArrayOf(v);
  if (dim < 1 || dim > static_cast<int>(array.Dims.size())) RaiseBadIndex();
  return array.Dims[dim - 1].Low + array.Dims[dim - 1].Count - 1;
}

// ---------------------------------------------------------------------------------------------
// Locking

void* VarArrayLock(Variant& v) {
  ArrayBlock& array = VariantAccess::UniqueArray(v);
  ++array.LockCount;
  return IsItemKind(array.ElementType) ? static_cast<void*>(array.Items.data())
                                       : static_cast<void*>(array.Raw.data());
}

void VarArrayUnlock(Variant& v) {
  ArrayBlock& array = MutableArrayOf(v);
  if (array.LockCount == 0) throw EVariantError("Unexpected variant error");
  --array.LockCount;
}

bool VarArrayIsLocked(const Variant& v) { return VarIsArray(v) && ArrayOf(v).LockCount > 0; }

// ---------------------------------------------------------------------------------------------
// Elements

Variant VarArrayGet(const Variant& v, std::span<const int32_t> indices) {
  const ArrayBlock& array = ArrayOf(v);
  return detail::ArrayElement(array, FlatIndex(array, indices));
}

Variant VarArrayGet(const Variant& v, std::initializer_list<int32_t> indices) {
  return VarArrayGet(v, std::span<const int32_t>(indices.begin(), indices.size()));
}

void VarArrayPut(Variant& v, const Variant& value, std::span<const int32_t> indices) {
  const ArrayBlock& shared = ArrayOf(v);
  const size_t flat = FlatIndex(shared, indices);
  // Converted (and so copied) before the array is unshared: `value` may be `v` itself.
  Variant element = shared.ElementType == varVariant ? value : VarAsType(value, shared.ElementType);
  StoreElement(VariantAccess::UniqueArray(v), flat, std::move(element));
}

void VarArrayPut(Variant& v, const Variant& value, std::initializer_list<int32_t> indices) {
  VarArrayPut(v, value, std::span<const int32_t>(indices.begin(), indices.size()));
}

Variant Variant::operator[](int32_t index) const { return VarArrayGet(*this, {index}); }

void VarArrayRedim(Variant& v, int32_t highBound) {
  const ArrayBlock& shared = ArrayOf(v);
  if (shared.LockCount > 0) RaiseLocked();
  const int64_t count = int64_t(highBound) - shared.Dims.back().Low + 1;
  if (count < 0) RaiseBadIndex();
  ArrayBlock& array = VariantAccess::UniqueArray(v);
  array.Dims.back().Count = static_cast<int32_t>(count);
  const size_t total = TotalCount(array.Dims);
  if (IsItemKind(array.ElementType))
    array.Items.resize(total, EmptyElement(array.ElementType));
  else
    array.Raw.resize(total * ElementSize(array.ElementType), 0);
}

// ---------------------------------------------------------------------------------------------
// Byte arrays

Variant VarFromBytes(const TBytes& bytes) {
  auto block = std::make_unique<ArrayBlock>();
  block->ElementType = varByte;
  block->Dims = {{0, static_cast<int32_t>(bytes.size())}};
  block->Raw = bytes;
  return VariantAccess::MakeBlock(varArray | varByte, block.release());
}

TBytes VarToBytes(const Variant& v) {
  if (v.VType() == varEmpty) return {};
  if (v.VType() == varNull && !NullStrictConvert) return {};
  if (v.VType() == (varArray | varByte)) {
    const ArrayBlock& array = ArrayOf(v);
    if (array.Dims.size() == 1) return array.Raw;
  }
  detail::RaiseCastError(v.VType(), varArray | varByte);
}

}  // namespace orv
