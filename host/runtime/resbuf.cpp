// Value-list nodes: allocation, construction from a type/value run, release.
// Every node and every string it holds is allocated here and freed by acutRelRb.

#include <cstdarg>
#include <cstdlib>
#include <cstring>
#include <cwchar>

#include "adslib.h"

RbKind rbKindOf(int restype) {
    switch (restype) {
        case RTREAL: case RTANG: case RTORINT: return RbKind::Real;
        case RTPOINT: case RT3DPOINT: return RbKind::Point;
        case RTSHORT: return RbKind::Short;
        case RTLONG: return RbKind::Long;
        case RTSTR: case RTDXF0: return RbKind::String;   // RTDXF0: group 0 in a build list
        case RTENAME: case RTPICKS: return RbKind::Name;
        case RTLB: case RTLE: case RTDOTE: case RTNIL: case RTT: case RTNONE: case RTVOID:
            return RbKind::None;
        default: break;
    }
    // Entity-data group codes, by the ranges drawing files use.
    int c = restype;
    if (c == -1 || c == -2 || (c >= 330 && c <= 369)) return RbKind::Name;
    if ((c >= 0 && c <= 9) || c == 100 || c == 102 || c == 105 || (c >= 300 && c <= 309) ||
        (c >= 390 && c <= 399) || (c >= 410 && c <= 419) || (c >= 430 && c <= 439) ||
        (c >= 470 && c <= 479) || c == 999 || (c >= 1000 && c <= 1003) || c == 1005 ||
        c == -4)
        return RbKind::String;
    if ((c >= 10 && c <= 17) || (c >= 110 && c <= 112) || (c >= 210 && c <= 219) ||
        (c >= 1010 && c <= 1013))
        return RbKind::Point;
    if ((c >= 38 && c <= 59) || (c >= 140 && c <= 149) || (c >= 460 && c <= 469) ||
        (c >= 1040 && c <= 1042) || (c >= 220 && c <= 239))
        return RbKind::Real;
    if ((c >= 60 && c <= 79) || (c >= 170 && c <= 179) || (c >= 270 && c <= 289) ||
        (c >= 370 && c <= 389) || (c >= 400 && c <= 409) || c == 1070)
        return RbKind::Short;
    if ((c >= 90 && c <= 99) || (c >= 420 && c <= 429) || (c >= 440 && c <= 459) ||
        c == 1071)
        return RbKind::Long;
    if (c >= 160 && c <= 169) return RbKind::Int64;
    if ((c >= 310 && c <= 319) || c == 1004) return RbKind::Binary;
    return RbKind::None;
}

resbuf* acutNewRb(int type) {
    auto* rb = static_cast<resbuf*>(std::calloc(1, sizeof(resbuf)));
    if (rb) rb->restype = static_cast<short>(type);
    return rb;
}

int acutNewString(const ACHAR* source, ACHAR*& dest) {
    dest = nullptr;
    if (!source) return RTERROR;
    size_t n = std::wcslen(source) + 1;
    dest = static_cast<ACHAR*>(std::malloc(n * sizeof(ACHAR)));
    if (!dest) return RTERROR;
    std::wmemcpy(dest, source, n);
    return RTNORM;
}

void acutDelString(ACHAR*& string) {
    std::free(string);
    string = nullptr;
}

int acutRelRb(resbuf* list) {
    while (list) {
        resbuf* next = list->rbnext;
        RbKind kind = rbKindOf(list->restype);
        if (kind == RbKind::String) std::free(list->resval.rstring);
        if (kind == RbKind::Binary) std::free(list->resval.rbinary.buf);
        std::free(list);
        list = next;
    }
    return RTNORM;
}

namespace {

// Fills one node's value from the variable arguments; false for an unknown code.
bool takeValue(resbuf* rb, va_list& ap) {
    switch (rbKindOf(rb->restype)) {
        case RbKind::Real: rb->resval.rreal = va_arg(ap, double); return true;
        case RbKind::Point: {
            const double* p = va_arg(ap, const double*);
            for (int i = 0; i < 3; ++i) rb->resval.rpoint[i] = p ? p[i] : 0.0;
            return true;
        }
        case RbKind::Short: rb->resval.rint = static_cast<short>(va_arg(ap, int)); return true;
        case RbKind::Long: rb->resval.rlong = va_arg(ap, std::int32_t); return true;
        case RbKind::Int64: rb->resval.mnInt64 = va_arg(ap, std::int64_t); return true;
        case RbKind::String: {
            const ACHAR* s = va_arg(ap, const ACHAR*);
            return acutNewString(s ? s : L"", rb->resval.rstring) == RTNORM;
        }
        case RbKind::Name: {
            const std::int64_t* n = va_arg(ap, const std::int64_t*);
            rb->resval.rlname[0] = n ? n[0] : 0;
            rb->resval.rlname[1] = n ? n[1] : 0;
            return true;
        }
        case RbKind::Binary: {
            const ads_binary* b = va_arg(ap, const ads_binary*);
            rb->resval.rbinary.clen = b ? b->clen : 0;
            rb->resval.rbinary.buf = static_cast<char*>(std::malloc(b && b->clen ? b->clen : 1));
            if (b && b->clen) std::memcpy(rb->resval.rbinary.buf, b->buf, b->clen);
            return true;
        }
        case RbKind::None: {
            int t = rb->restype;
            return t == RTLB || t == RTLE || t == RTDOTE || t == RTNIL || t == RTT ||
                   t == RTNONE || t == RTVOID;
        }
    }
    return false;
}

}  // namespace

resbuf* acutBuildList(int type, ...) {
    va_list ap;
    va_start(ap, type);
    resbuf* head = nullptr;
    resbuf** tail = &head;
    for (int t = type; t != 0; t = va_arg(ap, int)) {
        resbuf* rb = acutNewRb(t);
        if (!rb || !takeValue(rb, ap)) {
            std::free(rb);
            acutRelRb(head);
            head = nullptr;
            break;
        }
        *tail = rb;
        tail = &rb->rbnext;
    }
    va_end(ap);
    return head;
}
