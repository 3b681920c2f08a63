// File system operations with the meaning the product's LISP code relies on, over
// POSIX and std::filesystem. Each answers true on success and never throws.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kelvo {

bool makeFolder(const std::string& path);    // fails when it exists or its parent does not
bool removeFolder(const std::string& path);  // fails unless it is an empty folder
bool deleteFile(const std::string& path);    // files and links only, never a folder
// Copies a file over an existing destination, keeping the source's modification time.
bool copyFile(const std::string& source, const std::string& destination);
// Copies only when both exist and the source's modification time, in whole seconds, is
// strictly later than the destination's. Never creates a destination.
bool copyFileIfNewer(const std::string& source, const std::string& destination);
// Moves (renames) a file or folder; never replaces an existing destination. A file is
// copied and then deleted when the destination is on another file system.
bool moveFile(const std::string& source, const std::string& destination);

// Whether a file name matches a pattern of the system's file search: "*" any run of
// characters, "?" exactly one, every other character itself ("[" included, compared with
// case); a pattern ending in ".*" also takes names without an extension, so "*.*" takes
// every name, and one ending in "." asks for names without an extension ("*." lists
// "." and ".." too, as they end in a dot).
bool matchesFilePattern(std::string_view pattern, std::string_view name);

// The names (no folder part) of the entries matching `pattern`, whose last component
// may hold the wildcards of matchesFilePattern. The entries "." and ".."
// and folders are included when they match. Sorted by name (byte order), so that the
// answer does not depend on the order in which the file system stores entries.
// Empty when the folder cannot be read or nothing matches.
std::vector<std::string> listMatchingNames(const std::string& pattern);

}  // namespace kelvo
