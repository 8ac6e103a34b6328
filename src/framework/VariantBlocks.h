#pragma once
// The shared blocks behind a Variant and the implementation's access to its payload. Private
// to the Variant's .cpp files.

#include <cstring>
#include <new>
#include <string_view>
#include <vector>

#include "Variants.h"

namespace orv::detail {

// Text stored right after its head, so that a text Variant costs one allocation.
template <class CharT>
struct TextBlock : VarBlock {
  size_t Length = 0;

  const CharT* Chars() const { return reinterpret_cast<const CharT*>(this + 1); }
  std::basic_string_view<CharT> View() const { return {Chars(), Length}; }

  static TextBlock* Create(std::basic_string_view<CharT> text) {
    void* memory = ::operator new(sizeof(TextBlock) + (text.size() + 1) * sizeof(CharT));
    auto* block = new (memory) TextBlock;
    block->Length = text.size();
    auto* chars = reinterpret_cast<CharT*>(block + 1);
    if (!text.empty()) std::memcpy(chars, text.data(), text.size() * sizeof(CharT));
    chars[text.size()] = CharT();
    return block;
  }
  static void Destroy(TextBlock* block) noexcept {
    block->~TextBlock();
    ::operator delete(block);
  }
};
using NativeTextBlock = TextBlock<char>;
using WideTextBlock = TextBlock<char16_t>;

template <class T>
struct ValueBlock : VarBlock {
  explicit ValueBlock(const T& value) : Value(value) {}
  T Value;
};

struct ArrayDim {
  int32_t Low = 0;
  int32_t Count = 0;
};

// Fixed-size elements live in Raw as their C++ types; text and Variant elements in Items.
struct ArrayBlock : VarBlock {
  TVarType ElementType = varVariant;
  std::vector<ArrayDim> Dims;
  uint32_t LockCount = 0;
  std::vector<uint8_t> Raw;
  std::vector<Variant> Items;

  ArrayBlock() = default;
  // A copy is unshared and unlocked.
  ArrayBlock(const ArrayBlock& other)
      : VarBlock(), ElementType(other.ElementType), Dims(other.Dims), Raw(other.Raw),
        Items(other.Items) {}
  ArrayBlock& operator=(const ArrayBlock&) = delete;
};

struct VariantAccess {
  using Payload = Variant::Payload;

  static Variant Make(TVarType type, Payload data) noexcept {
    Variant v;
    v.FType = type;
    v.FData = data;
    return v;
  }
  static Variant MakeBlock(TVarType type, VarBlock* block) noexcept {
    Payload data;
    data.Block = block;
    return Make(type, data);
  }
  static const Payload& Data(const Variant& v) noexcept { return v.FData; }

  template <class B>
  static const B& Block(const Variant& v) noexcept {
    return *static_cast<const B*>(v.FData.Block);
  }
  // The array block of `v`, made unshared first so that it can be written.
  static ArrayBlock& UniqueArray(Variant& v);
};

void FreeBlock(TVarType type, VarBlock* block) noexcept;

// Element `flat` of an array's storage (column-major), as a Variant of the element type.
Variant ArrayElement(const ArrayBlock& array, size_t flat);

// The text of a string Variant as UTF-8, converted from UTF-16 where needed.
String TextOf(const Variant& v);

// The errors every coercion raises, with the platform's texts.
[[noreturn]] void RaiseCastError(TVarType from, TVarType to);
[[noreturn]] void RaiseOverflowError(TVarType from, TVarType to);

}  // namespace orv::detail
