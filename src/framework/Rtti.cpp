#include "TypInfo.h"

namespace orv {

TRttiType::TRttiType(TClass cls) : FClass(cls) {
  const std::vector<PPropInfo>& list = GetClassProps(cls).List();
  FProperties.reserve(list.size());
  for (PPropInfo info : list) FProperties.emplace_back(info);
}

const TRttiProperty* TRttiType::GetProperty(std::string_view name) const {
  PPropInfo info = GetClassProps(FClass).Find(name);
  return info ? &FProperties[static_cast<size_t>(info->NameIndex)] : nullptr;
}

std::vector<const TRttiProperty*> TRttiType::GetProperties() const {
  std::vector<const TRttiProperty*> list;
  list.reserve(FProperties.size());
  for (const TRttiProperty& property : FProperties) list.push_back(&property);
  return list;
}

const TRttiType* TRttiContext::GetType(TClass cls) {
  if (!cls) return nullptr;
  std::unique_ptr<TRttiType>& type = FTypes[cls];
  if (!type) type = std::make_unique<TRttiType>(cls);
  return type.get();
}

const TRttiType* TRttiContext::GetType(PTypeInfo typeInfo) {
  return typeInfo && typeInfo->Kind == tkClass ? GetType(typeInfo->TypeData.ClassType) : nullptr;
}

}  // namespace orv
