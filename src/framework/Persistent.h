#pragma once
// TPersistent: objects that can be assigned to one another and streamed into form files.

#include "System.h"

namespace orv {

class TFiler;

class TPersistent : public TObject {
  ORV_CLASS(TPersistent, TObject)
 public:
  TPersistent() = default;

  // Copies `source` into this object; the source decides through its AssignTo when this class
  // does not know it. EConvertError "Cannot assign a %s to a %s" when neither knows the other.
  virtual void Assign(TPersistent* source);
  // The name of the object in its owner's tree, as the designer shows it.
  virtual String GetNamePath() const;

 protected:
  virtual void AssignTo(TPersistent* dest);
  // Lets a class write and read data that are not published properties (form files).
  virtual void DefineProperties(TFiler* filer);
  // The object that owns this one in the form tree, if any.
  virtual TPersistent* GetOwner() const;
  [[noreturn]] void AssignError(const TPersistent* source) const;

  friend class TFiler;
  friend class TReader;
  friend class TWriter;
};

}  // namespace orv
