// The engine's cursor behind a recordset.
#pragma once

namespace dao {

class Cursor {
public:
    virtual ~Cursor() = default;
};

}  // namespace dao
