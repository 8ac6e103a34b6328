#include "TypInfo.h"

namespace orv {

ORV_IMPLEMENT_CLASS(TCustomAttribute)

// ---------------------------------------------------------------------------------------------
// TPropInfo: the accessors of the other type categories

TPropInfo::~TPropInfo() = default;

std::vector<const TCustomAttribute*> TPropInfo::GetAttributes() const {
  std::vector<const TCustomAttribute*> list;
  list.reserve(Attributes.size());
  for (const auto& attribute : Attributes) list.push_back(attribute.get());
  return list;
}

void TPropInfo::TypeError() const { throw EPropertyError("Invalid property type: " + PropType->Name); }

void TPropInfo::ReadOnlyError() const { throw EPropertyError("Property is read-only"); }

int64_t TPropInfo::GetOrd(const TObject*) const { TypeError(); }
void TPropInfo::SetOrd(TObject*, int64_t) const { TypeError(); }
long double TPropInfo::GetFloat(const TObject*) const { TypeError(); }
void TPropInfo::SetFloat(TObject*, long double) const { TypeError(); }
String TPropInfo::GetStr(const TObject*) const { TypeError(); }
void TPropInfo::SetStr(TObject*, String) const { TypeError(); }
WideString TPropInfo::GetWideStr(const TObject*) const { TypeError(); }
void TPropInfo::SetWideStr(TObject*, WideString) const { TypeError(); }
TObject* TPropInfo::GetObject(const TObject*) const { TypeError(); }
void TPropInfo::SetObject(TObject*, TObject*) const { TypeError(); }
IInterfacePtr TPropInfo::GetInterface(const TObject*) const { TypeError(); }
void TPropInfo::SetInterface(TObject*, IInterfacePtr) const { TypeError(); }
TMethod TPropInfo::GetMethod(const TObject*) const { TypeError(); }
void TPropInfo::SetMethod(TObject*, const TMethod&) const { TypeError(); }
Variant TPropInfo::GetAsVariant(const TObject*) const { TypeError(); }
void TPropInfo::SetAsVariant(TObject*, const Variant&) const { TypeError(); }

// ---------------------------------------------------------------------------------------------
// Class property lists

TClassProps::TClassProps(std::shared_ptr<const TClassProps> parent) : FParent(std::move(parent)) {
  if (FParent) {
    FList = FParent->FList;
    FByName = FParent->FByName;
  }
}

TPropInfo& TClassPublisher::Add(std::unique_ptr<TPropInfo> info) {
  info->DeclaringClass = FClass;
  auto inherited = FProps.FByName.find(info->Name);
  if (inherited != FProps.FByName.end()) {
    // Published again by a descendant: the new record takes the inherited one's place.
    info->NameIndex = inherited->second->NameIndex;
    FProps.FList[static_cast<size_t>(info->NameIndex)] = info.get();
    FProps.FByName.erase(inherited);
  } else {
    info->NameIndex = static_cast<int32_t>(FProps.FList.size());
    FProps.FList.push_back(info.get());
  }
  // The key views the record's own name, which lives as long as the record.
  FProps.FByName.emplace(info->Name, info.get());
  FProps.FOwn.push_back(std::move(info));
  return *FProps.FOwn.back();
}

namespace {

std::shared_ptr<const TClassProps> SharedClassProps(TClass cls) {
  if (cls->Props) return cls->Props;
  std::shared_ptr<const TClassProps> parent = cls->Parent ? SharedClassProps(cls->Parent) : nullptr;
  if (!cls->Publish) {
    cls->Props = parent ? parent : std::make_shared<const TClassProps>(nullptr);
  } else {
    auto props = std::make_shared<TClassProps>(parent);
    TClassPublisher publisher(cls, *props);
    cls->Publish(publisher);
    cls->Props = std::move(props);
  }
  return cls->Props;
}

}  // namespace

const TClassProps& GetClassProps(TClass cls) {
  if (cls->Props) return *cls->Props;
  return *SharedClassProps(cls);
}

}  // namespace orv
