// The general-table functions built so far: asin, acos, tv::pow, tv_tv-rand,
// GetTempPath, IsFileReadOnly, GetComputerName, PathIsNetworkPath.
#pragma once

namespace kelvo {

// (asin x), (acos x): a real in radians; x outside -1..1 is bad data.
int tvAsin();
int tvAcos();
// (tv::pow base exponent): a real; a result that is not a finite number is bad data.
int tvPow();
// (tv_tv-rand): an integer from the module's random generator, 0 to 32767.
int tvRand();
// (GetTempPath): the temporary folder ($TMPDIR, else /tmp), ending in "/".
int tvGetTempPath();
// (IsFileReadOnly path): T when the file exists and carries no write permission for
// anyone (the read-only attribute), else nil.
int tvIsFileReadOnly();
// (GetComputerName): the computer's host name.
int tvGetComputerName();
// (PathIsNetworkPath path): T for a "\\server\share" or "//server/share" path, or a
// path on a network file system (NFS, SMB/CIFS); else nil.
int tvPathIsNetworkPath();

}  // namespace kelvo
