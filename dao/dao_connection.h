// The engine's side of an open database.
#pragma once

namespace dao {

class Connection {
public:
    virtual ~Connection() = default;
};

}  // namespace dao
