// A few general-table functions that need nothing from the drawing or the database.
#include "module/general_functions.h"

#include <sys/stat.h>
#include <sys/vfs.h>
#include <unistd.h>

#include <climits>
#include <cmath>
#include <cstdlib>
#include <string>

#include "adslib.h"
#include "bridge/arg_readers.h"
#include "bridge/handler_guard.h"
#include "module/random_numbers.h"
#include "utf8.h"
#include "bridge/value_list.h"

namespace kelvo {
namespace {

using RealFunction = double (*)(double);

int realFunctionHandler(RealFunction function) {
    HandlerArgs args;
    double x = 0.0;
    if (args.atEnd()) return kTooFewArgs;
    if (!readNumber(args.cursor(), x)) return kWrongArgType;
    if (x < -1.0 || x > 1.0) return kBadArgData;
    acedRetReal(function(x));
    return kArgOk;
}

int asinHandler() {
    return realFunctionHandler([](double x) { return std::asin(x); });
}
int acosHandler() {
    return realFunctionHandler([](double x) { return std::acos(x); });
}

int powHandler() {
    HandlerArgs args;
    double base = 0.0, exponent = 0.0;
    if (args.atEnd()) return kTooFewArgs;
    if (!readNumber(args.cursor(), base)) return kWrongArgType;
    if (args.atEnd()) return kTooFewArgs;
    if (!readNumber(args.cursor(), exponent)) return kWrongArgType;
    const double result = std::pow(base, exponent);
    if (!std::isfinite(result)) return kBadArgData;
    acedRetReal(result);
    return kArgOk;
}

int randHandler() {
    HandlerArgs args;
    acedRetInt(nextRandomNumber());
    return kArgOk;
}

int tempPathHandler() {
    HandlerArgs args;
    const char* folder = std::getenv("TMPDIR");
    std::string path = folder != nullptr && *folder != '\0' ? folder : "/tmp";
    if (path.back() != '/') path += '/';
    acedRetStr(fromUtf8(path).c_str());
    return kArgOk;
}

int readOnlyHandler() {
    HandlerArgs args;
    std::wstring path;
    if (!readText(args.cursor(), path)) return kWrongArgType;
    struct stat info {};
    const bool exists = ::stat(toUtf8(path).c_str(), &info) == 0;
    if (exists && (info.st_mode & (S_IWUSR | S_IWGRP | S_IWOTH)) == 0) acedRetT();
    return kArgOk;
}

int computerNameHandler() {
    HandlerArgs args;
    char name[HOST_NAME_MAX + 1] = {};
    if (::gethostname(name, sizeof name - 1) == 0) acedRetStr(fromUtf8(name).c_str());
    return kArgOk;
}

bool onNetworkFileSystem(const std::string& path) {
    struct statfs info {};
    if (::statfs(path.c_str(), &info) != 0) return false;
    constexpr unsigned long kNfs = 0x6969, kSmb = 0x517B, kCifs = 0xFF534D42, kSmb2 = 0xFE534D42;
    const auto type = static_cast<unsigned long>(info.f_type);
    return type == kNfs || type == kSmb || type == kCifs || type == kSmb2;
}

int networkPathHandler() {
    HandlerArgs args;
    std::wstring path;
    if (!readText(args.cursor(), path)) return kWrongArgType;
    const bool unc = path.starts_with(L"\\\\") || path.starts_with(L"//");
    if (unc || onNetworkFileSystem(toUtf8(path))) acedRetT();
    return kArgOk;
}

}  // namespace

int tvAsin() {
    return runGuarded(asinHandler);
}
int tvAcos() {
    return runGuarded(acosHandler);
}
int tvPow() {
    return runGuarded(powHandler);
}
int tvRand() {
    return runGuarded(randHandler);
}
int tvGetTempPath() {
    return runGuarded(tempPathHandler);
}
int tvIsFileReadOnly() {
    return runGuarded(readOnlyHandler);
}
int tvGetComputerName() {
    return runGuarded(computerNameHandler);
}
int tvPathIsNetworkPath() {
    return runGuarded(networkPathHandler);
}

}  // namespace kelvo
