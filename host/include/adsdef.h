// Host value lists: the node type, the type codes and the result codes that every
// native LISP function sees. The host converts LISP values to and from these chains at
// each external call.
#pragma once

#include <cstdint>

#ifndef ACHAR_DEFINED
#define ACHAR_DEFINED
using ACHAR = wchar_t;
#endif

#define KELVO_HOST_API __attribute__((visibility("default")))

using ads_real = double;
using ads_point = ads_real[3];
using ads_name = std::int64_t[2];   // entity or selection-set name: two words
using ads_pointp = ads_real*;
using ads_namep = std::int64_t*;

enum { X = 0, Y = 1, Z = 2 };

// Value type codes (resbuf::restype). Codes below 1000 are entity-data group codes.
constexpr short RTNONE = 5000;
constexpr short RTREAL = 5001;
constexpr short RTPOINT = 5002;
constexpr short RTSHORT = 5003;
constexpr short RTANG = 5004;
constexpr short RTSTR = 5005;
constexpr short RTENAME = 5006;
constexpr short RTPICKS = 5007;
constexpr short RTORINT = 5008;
constexpr short RT3DPOINT = 5009;
constexpr short RTLONG = 5010;
constexpr short RTVOID = 5014;
constexpr short RTLB = 5016;
constexpr short RTLE = 5017;
constexpr short RTDOTE = 5018;
constexpr short RTNIL = 5019;
constexpr short RTDXF0 = 5020;
constexpr short RTT = 5021;
constexpr short RTRESBUF = 5023;

// Status codes of host calls.
constexpr int RTNORM = 5100;
constexpr int RTERROR = -5001;
constexpr int RTCAN = -5002;
constexpr int RTREJ = -5003;
constexpr int RTFAIL = -5004;
constexpr int RTKWORD = -5005;

// What an external function's callback returns to the host.
constexpr int RSRSLT = 1;   // the function has set its result
constexpr int RSERR = 3;    // the function failed

struct ads_binary {
    short clen;
    char* buf;
};

union ads_u_val {
    ads_real rreal;
    ads_real rpoint[3];
    short rint;
    ACHAR* rstring;
    std::int64_t rlname[2];
    std::int32_t rlong;
    std::int64_t mnInt64;
    ads_binary rbinary;
};

struct resbuf {
    resbuf* rbnext;
    short restype;
    ads_u_val resval;
};

// What kind of value a type code (RT code or entity-data group code) carries.
enum class RbKind { None, Real, Point, Short, Long, Int64, String, Name, Binary };
extern "C++" KELVO_HOST_API RbKind rbKindOf(int restype);
