// Finding a database file: as given, else along the host's support folders.
#pragma once

#include <string>

namespace kelvo::database {

// `path` when a file exists there; otherwise the first "<folder>/<path>" that exists,
// trying the folders of the host variable ACADPREFIX (separated by ";") in order, a
// separator added when the folder lacks a trailing one; otherwise `path` unchanged.
std::wstring findDatabaseFile(const std::wstring& path);

}  // namespace kelvo::database
