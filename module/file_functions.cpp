// The file and folder functions of the database table.
#include "module/file_functions.h"

#include "adslib.h"
#include "bridge/arg_readers.h"
#include "module/file_operations.h"
#include "bridge/handler_guard.h"
#include "bridge/result_builder.h"
#include "utf8.h"
#include "bridge/value_list.h"

namespace kelvo {
namespace {

using PathOperation = bool (*)(const std::string&);
using TwoPathOperation = bool (*)(const std::string&, const std::string&);

void returnTruth(bool value) {
    if (value) acedRetT();
}

// One path; a missing or non-text argument gives `badArgument`.
int onePathHandler(PathOperation operation, int badArgument) {
    HandlerArgs args;
    std::wstring path;
    if (!readText(args.cursor(), path)) return badArgument;
    returnTruth(operation(toUtf8(path)));
    return kArgOk;
}

// Two paths; fewer than two arguments give status 1 when `countFirst`, else 2.
int twoPathHandler(TwoPathOperation operation, bool countFirst) {
    HandlerArgs args;
    const resbuf* first = args.cursor();
    if (countFirst && (first == nullptr || first->rbnext == nullptr)) return kTooFewArgs;
    std::wstring source, destination;
    if (!readText(args.cursor(), source) || !readText(args.cursor(), destination)) {
        return kWrongArgType;
    }
    returnTruth(operation(toUtf8(source), toUtf8(destination)));
    return kArgOk;
}

int mkdirHandler() {
    return onePathHandler(makeFolder, kWrongArgType);
}
int rmdirHandler() {
    return onePathHandler(removeFolder, kWrongArgType);
}
int fdeleteHandler() {
    return onePathHandler(deleteFile, kArgOk);
}
int fcopyHandler() {
    return twoPathHandler(copyFile, true);
}
int fcopyIfChangedHandler() {
    return twoPathHandler(copyFileIfNewer, true);
}
int fmoveHandler() {
    return twoPathHandler(moveFile, false);
}

int fdirHandler() {
    HandlerArgs args;
    std::wstring pattern;
    if (!readText(args.cursor(), pattern)) return kArgOk;
    const auto names = listMatchingNames(toUtf8(pattern));
    if (names.empty()) return kArgOk;
    ResultBuilder result;
    result.open();
    for (const auto& name : names) result.addText(fromUtf8(name));
    result.close();
    return kArgOk;
}

}  // namespace

int kvMkdir() {
    return runDatabaseCall(mkdirHandler);
}
int kvRmdir() {
    return runDatabaseCall(rmdirHandler);
}
int kvFdelete() {
    return runDatabaseCall(fdeleteHandler);
}
int kvFdir() {
    return runDatabaseCall(fdirHandler);
}
int kvFcopy() {
    return runDatabaseCall(fcopyHandler);
}
int kvFcopyIfChanged() {
    return runDatabaseCall(fcopyIfChangedHandler);
}
int kvFmove() {
    return runDatabaseCall(fmoveHandler);
}

}  // namespace kelvo
