#pragma once
// Extended type information: a class's published properties as objects, with the attributes put
// on them. The objects belong to the TRttiContext that gave them and live as long as it does.

#include <memory>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "TypInfoProps.h"

namespace orv {

class TRttiProperty {
 public:
  explicit TRttiProperty(PPropInfo info) : FInfo(info) {}

  const String& GetName() const { return FInfo->Name; }
  PTypeInfo GetPropertyType() const { return FInfo->PropType; }
  bool IsReadable() const { return true; }
  bool IsWritable() const { return FInfo->IsWritable(); }
  PPropInfo PropInfo() const { return FInfo; }
  std::vector<const TCustomAttribute*> GetAttributes() const { return FInfo->GetAttributes(); }
  template <class A>
  const A* GetAttribute() const {
    return orv::GetAttribute<A>(FInfo);
  }
  template <class A>
  bool HasAttribute() const {
    return GetAttribute<A>() != nullptr;
  }

 private:
  PPropInfo FInfo;
};

// The information of a class.
class TRttiType {
 public:
  explicit TRttiType(TClass cls);
  TRttiType(const TRttiType&) = delete;
  TRttiType& operator=(const TRttiType&) = delete;

  String GetName() const { return FClass->Name; }
  TClass MetaclassType() const { return FClass; }
  // Null when the class publishes no such property; the name is compared without case.
  const TRttiProperty* GetProperty(std::string_view name) const;
  // Inherited properties first, then declaration order.
  std::vector<const TRttiProperty*> GetProperties() const;

 private:
  TClass FClass;
  std::vector<TRttiProperty> FProperties;  // in the class's list order
};

class TRttiContext {
 public:
  TRttiContext() = default;
  TRttiContext(TRttiContext&&) = default;
  TRttiContext& operator=(TRttiContext&&) = default;

  // Null for no class.
  const TRttiType* GetType(TClass cls);
  // The type of a class record (tkClass); null for the records of other kinds.
  const TRttiType* GetType(PTypeInfo typeInfo);

 private:
  std::unordered_map<TClass, std::unique_ptr<TRttiType>> FTypes;
};

}  // namespace orv
