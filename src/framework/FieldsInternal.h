#pragma once
// Helpers the field, field-definition and flat-list sources share; not part of the interface.

#include <cstddef>

#include "System.h"

namespace orv::fields_detail {

// Names compared as the hashed indexes compare them: ASCII letters without case, other bytes
// as they are. A name with other bytes may still match through the locale-aware comparison,
// which the indexes try by a scan when the hash finds nothing.
size_t NameHash(const String& name) noexcept;
bool SameAsciiName(const String& a, const String& b) noexcept;
bool IsAsciiName(const String& name) noexcept;

}  // namespace orv::fields_detail
