// The whole data access engine: include this to use any of its classes.
#pragma once

#include "dao_database.h"
#include "dao_engine.h"
#include "dao_errors.h"
#include "dao_exception.h"
#include "dao_field_info.h"
#include "dao_querydef.h"
#include "dao_recordset.h"
#include "dao_tabledef.h"
#include "dao_variant.h"
