// The process-wide database connection is built in the database layer; the module's
// per-document records only point at it.
#pragma once

class CDBConnection;
