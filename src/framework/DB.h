#pragma once
// The data-set framework: data sets, fields, field definitions, data sources and links.

#include "DBConsts.h"
#include "DBTypes.h"
#include "DataLinks.h"
#include "DataSet.h"
#include "FieldDefs.h"
#include "Fields.h"
