// Names of the cursors.

#include "Controls.h"
#include "SysUtils.h"

namespace orv {

namespace {

// crSize repeats crSizeAll, so only the latter names the value.
constexpr TIdentMapEntry Cursors[] = {
    {crDefault, "crDefault"},     {crNone, "crNone"},         {crArrow, "crArrow"},
    {crCross, "crCross"},         {crIBeam, "crIBeam"},       {crSizeNESW, "crSizeNESW"},
    {crSizeNS, "crSizeNS"},       {crSizeNWSE, "crSizeNWSE"}, {crSizeWE, "crSizeWE"},
    {crUpArrow, "crUpArrow"},     {crHourGlass, "crHourGlass"}, {crDrag, "crDrag"},
    {crNoDrop, "crNoDrop"},       {crHSplit, "crHSplit"},     {crVSplit, "crVSplit"},
    {crMultiDrag, "crMultiDrag"}, {crSQLWait, "crSQLWait"},   {crNo, "crNo"},
    {crAppStart, "crAppStart"},   {crHelp, "crHelp"},         {crHandPoint, "crHandPoint"},
    {crSizeAll, "crSizeAll"},
};

}  // namespace

bool CursorToIdent(int32_t Cursor, String& Ident) { return IntToIdent(Cursor, Ident, Cursors); }

bool IdentToCursor(const String& Ident, int32_t& Cursor) {
  return IdentToInt(Ident, Cursor, Cursors);
}

String CursorToString(TCursor Cursor) {
  String name;
  return CursorToIdent(Cursor, name) ? name : IntToStr(Cursor);
}

TCursor StringToCursor(const String& S) {
  int32_t cursor = 0;
  if (!IdentToCursor(S, cursor)) cursor = StrToInt(S);
  return static_cast<TCursor>(cursor);
}

}  // namespace orv
