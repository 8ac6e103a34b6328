// The framework's error helpers and the field-name list reader every ";" list goes through.

#include "DataSet.h"
#include "SysUtils.h"

namespace orv {

void DatabaseError(const String& Message, const TComponent* Component) {
  if (Component && !Component->GetName().empty())
    throw EDatabaseError(Component->GetName() + ": " + Message);
  throw EDatabaseError(Message);
}

void DatabaseErrorFmt(const String& Message, std::initializer_list<FormatArg> Args,
                      const TComponent* Component) {
  DatabaseError(Format(Message, Args), Component);
}

String ExtractFieldName(const String& Fields, int& Pos) {
  const size_t start = Pos > 0 ? static_cast<size_t>(Pos - 1) : 0;
  size_t end = Fields.find(';', start);
  if (end == String::npos) end = Fields.size();
  String name = Trim(Fields.substr(std::min(start, Fields.size()), end - std::min(start, end)));
  Pos = static_cast<int>(end < Fields.size() ? end + 2 : end + 1);
  return name;
}

}  // namespace orv
