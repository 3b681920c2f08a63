// Finding a tag block for a leader: in the drawing's block table, else as the drawing file
// NAME.dwg on the host's support path, inserted as a block definition.
#pragma once

#include <string>

#include "dbid.h"

class AcDbDatabase;

namespace kelvo {

// The block table record named `name` in `db`. When the table has none, the file
// NAME.dwg found by the host's findFile is read and inserted as the block definition
// `name`. When no such file is found, the message box "Block NAME could not be
// found..." (caption "Tarvik", error icon) is shown. A file that is found but cannot be
// read or inserted is reported on the command line. Answers the null id whenever there is
// no block.
AcDbObjectId findOrLoadBlock(AcDbDatabase* db, const std::wstring& name);

}  // namespace kelvo
