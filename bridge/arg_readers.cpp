// The argument readers over host value lists.
#include "bridge/arg_readers.h"

#include <cmath>
#include <cstdint>

#include "adslib.h"

namespace kelvo {
namespace {

bool isType(Cursor cursor, short type) {
    return cursor != nullptr && cursor->restype == type;
}

bool isGroupCode(Cursor cursor) {
    return cursor != nullptr && cursor->restype < 1000;
}

bool isPointGroupCode(Cursor cursor) {
    return cursor != nullptr && cursor->restype >= 10 && cursor->restype <= 17;
}

bool isIntegerNode(Cursor cursor) {
    return isType(cursor, RTSHORT) || isType(cursor, RTLONG);
}

bool isNumberNode(Cursor cursor) {
    return isType(cursor, RTREAL) || isIntegerNode(cursor);
}

void copyPoint(const ads_real* from, ads_point to, bool flat) {
    to[X] = from[X];
    to[Y] = from[Y];
    to[Z] = flat ? 0.0 : from[Z];
}

// A point node of any kind: RTPOINT, RT3DPOINT or a point group code.
bool readPointNode(Cursor& cursor, ads_point out) {
    if (!isType(cursor, RTPOINT) && !isType(cursor, RT3DPOINT) && !isPointGroupCode(cursor)) {
        return false;
    }
    copyPoint(cursor->resval.rpoint, out, cursor->restype == RTPOINT);
    cursor = cursor->rbnext;
    return true;
}

bool readPlainNumber(Cursor& cursor, double& out) {
    if (!isNumberNode(cursor)) return false;
    return readNumber(cursor, out);
}

// A real truncated toward zero; false when the result does not fit in 32 bits.
bool truncateToInt32(double value, std::int32_t& out) {
    const double whole = std::trunc(value);
    if (!(whole >= INT32_MIN && whole <= INT32_MAX)) return false;
    out = static_cast<std::int32_t>(whole);
    return true;
}

bool readName(Cursor& cursor, short type, ads_name out) {
    if (!isType(cursor, type)) return false;
    out[0] = cursor->resval.rlname[0];
    out[1] = cursor->resval.rlname[1];
    cursor = cursor->rbnext;
    return true;
}

}  // namespace

bool readText(Cursor& cursor, std::wstring& out) {
    if (!isType(cursor, RTSTR)) return false;
    out = cursor->resval.rstring != nullptr ? cursor->resval.rstring : L"";
    cursor = cursor->rbnext;
    return true;
}

bool readNarrowText(Cursor& cursor, std::unique_ptr<char[]>& out) {
    std::wstring text;
    if (!readText(cursor, text)) return false;
    out = std::make_unique<char[]>(text.size() + 1);
    for (std::size_t i = 0; i < text.size(); ++i) {
        out[i] = static_cast<char>(static_cast<unsigned char>(text[i] & 0xFF));
    }
    out[text.size()] = '\0';
    return true;
}

bool readReal(Cursor& cursor, double& out) {
    if (!isType(cursor, RTREAL)) return false;
    out = cursor->resval.rreal;
    cursor = cursor->rbnext;
    return true;
}

bool readNumber(Cursor& cursor, double& out) {
    if (readReal(cursor, out)) return true;
    std::int32_t value = 0;
    if (!readInteger(cursor, value)) return false;
    out = value;
    return true;
}

bool readInteger(Cursor& cursor, std::int32_t& out) {
    if (cursor == nullptr) return false;
    if (isGroupCode(cursor)) {
        out = cursor->restype;
        return true;
    }
    switch (cursor->restype) {
        case RTSHORT:
            out = cursor->resval.rint;
            break;
        case RTLONG:
            out = cursor->resval.rlong;
            break;
        case RTREAL:
            if (!truncateToInt32(cursor->resval.rreal, out)) return false;
            break;
        default:
            return false;
    }
    cursor = cursor->rbnext;
    return true;
}

bool readBoolean(Cursor& cursor, bool& out) {
    if (cursor == nullptr || cursor->restype == RTLB) return false;
    if (cursor->restype == RTLE) {
        out = false;
        return true;
    }
    out = cursor->restype != RTNIL;
    cursor = cursor->rbnext;
    return true;
}

bool readDaoBoolean(Cursor& cursor, std::uint16_t& out) {
    bool value = false;
    if (!readBoolean(cursor, value)) return false;
    out = value ? 65535 : 0;
    return true;
}

bool readListBegin(Cursor& cursor) {
    if (!isType(cursor, RTLB)) return false;
    cursor = cursor->rbnext;
    return true;
}

bool readListEnd(Cursor& cursor) {
    if (!isType(cursor, RTLE)) return false;
    cursor = cursor->rbnext;
    return true;
}

bool skipArgument(Cursor& cursor) {
    if (cursor == nullptr) return false;
    cursor = cursor->rbnext;
    return true;
}

bool readSelectionSet(Cursor& cursor, ads_name out) {
    return readName(cursor, RTPICKS, out);
}

bool readEntity(Cursor& cursor, ads_name out) {
    return readName(cursor, RTENAME, out);
}

bool readObject(Cursor& cursor, AcDbObjectId& out) {
    Cursor at = cursor;
    ads_name name{};
    if (!readEntity(at, name)) return false;
    AcDbObjectId id;
    if (acdbGetObjectId(id, name) != RTNORM) return false;
    out = id;
    cursor = at;
    return true;
}

bool isDottedPair(Cursor cursor) {
    return isType(cursor, RTLB) && cursor->rbnext != nullptr &&
           isType(cursor->rbnext->rbnext, RTDOTE);
}

bool readNamedInteger(Cursor& cursor, std::wstring& name, std::int32_t& value) {
    if (!isDottedPair(cursor)) return false;
    Cursor at = cursor->rbnext;
    std::wstring key;
    std::int32_t number = 0;
    if (!readText(at, key) || !skipArgument(at) || !readInteger(at, number)) return false;
    if (!readListEnd(at)) return false;
    name = std::move(key);
    value = number;
    cursor = at;
    return true;
}

bool read3dPoint(Cursor& cursor, ads_point out) {
    if (readPointNode(cursor, out)) return true;
    Cursor at = cursor;
    double x = 0.0, y = 0.0, z = 0.0;
    if (!readPlainNumber(at, x) || !readPlainNumber(at, y)) return false;
    if (isNumberNode(at)) readPlainNumber(at, z);
    out[X] = x;
    out[Y] = y;
    out[Z] = z;
    cursor = at;
    return true;
}

bool read2dPoint(Cursor& cursor, ads_point out) {
    if (readPointNode(cursor, out)) return true;
    Cursor at = cursor;
    double x = 0.0, y = 0.0;
    if (!readReal(at, x) || !readReal(at, y)) return false;
    out[X] = x;
    out[Y] = y;
    out[Z] = 0.0;
    cursor = at;
    return true;
}

}  // namespace kelvo
