// The LISP function tables: one entry per function, in the order that sets the codes.
#include "module/function_tables.h"

#include <iterator>

#include "database/database_functions.h"
#include "database/structure_functions.h"
#include "entities/leader_functions.h"
#include "entities/xdata_functions.h"
#include "module/file_functions.h"
#include "module/general_functions.h"
#include "module/message_functions.h"
#include "module/not_built.h"

namespace kelvo {
namespace {

constexpr AcedFunction kNotBuilt = nullptr;

// Codes 0 to 61.
constexpr LispFunction kDatabaseTable[] = {
    {L"kv_append", database::kvAppend},
    {L"kv_closeall_tables", database::kvCloseallTables},
    {L"kv_close_table", database::kvCloseTable},
    {L"kv_bottom", database::kvBottom},
    {L"kv_count", database::kvCount},
    {L"kv_delete", database::kvDelete},
    {L"kv_getrec", database::kvGetrec},
    {L"kv_structure", database::kvStructure},
    {L"kv_list_indexes", database::kvListIndexes},
    {L"kv_modify_table", kNotBuilt},
    {L"kv_replace", database::kvReplace},
    {L"kv_seek", database::kvSeek},
    {L"kv_skip", database::kvSkip},
    {L"kv_top", database::kvTop},
    {L"kv_table", database::kvTable},
    {L"kv_rename_table", database::kvRenameTable},
    {L"kv_connect", database::kvConnect},
    {L"kv_mdb", database::kvMdb},
    {L"kv_create_db", database::kvCreateDb},
    {L"kv_create_table", database::kvCreateTable},
    {L"kv_close_db", database::kvCloseDb},
    {L"kv_beep", kvBeep},
    {L"kv_random", kvRandom},
    {L"kv_message_beep", kvMessageBeep},
    {L"kv_exist", database::kvExist},
    {L"kv_readonly", database::kvReadonly},
    {L"kv_delete_table", database::kvDeleteTable},
    {L"kv_list_tables", database::kvListTables},
    {L"kv_current_table", database::kvCurrentTable},
    {L"kv_current_index", database::kvCurrentIndex},
    {L"kv_sql", database::kvSql},
    {L"kv_sql-nil", database::kvSqlNil},
    {L"kv_sql-error", database::kvSqlError},
    {L"kv_command", database::kvCommand},
    {L"kv_compact", database::kvCompact},
    {L"kv_link_table", kNotBuilt},
    {L"kv_query", database::kvQuery},
    {L"kv_message_box", kvMessageBox},
    {L"kv_create_index", database::kvCreateIndex},
    {L"kv_create_query", database::kvCreateQuery},
    {L"kv_xdput-list", kvXdputList},
    {L"kv_xdget", kvXdget},
    {L"kv_xdget-list", kvXdgetList},
    {L"kv_xdget-all", kvXdgetAll},
    {L"kv_mkdir", kvMkdir},
    {L"kv_relationExists", database::kvRelationExists},
    {L"kv_relationDelete", database::kvRelationDelete},
    {L"kv_lastError", database::kvLastError},
    {L"kv_resetLastError", database::kvResetLastError},
    {L"kv_field_required", database::kvFieldRequired},
    {L"kv_attributes", database::kvAttributes},
    {L"kv_getVersion", kvGetVersion},
    {L"kv_rmdir", kvRmdir},
    {L"kv_fmove", kvFmove},
    {L"kv_fcopy", kvFcopy},
    {L"kv_fcopyIfChanged", kvFcopyIfChanged},
    {L"kv_fdir", kvFdir},
    {L"kv_fdelete", kvFdelete},
    {L"kv_indexUnique", database::kvIndexUnique},
    {L"kv_indexFields", database::kvIndexFields},
    {L"kv_relationCount", database::kvRelationCount},
    {L"kv_relationInfo", database::kvRelationInfo},
};

// Codes from 62, after the database table.
constexpr LispFunction kGeneralTable[] = {
    {L"tv_tv-setGroupSelectable", kNotBuilt},
    {L"tv_tv-GetGroup", kNotBuilt},
    {L"AcDbCurve::getLength", kNotBuilt},
    {L"AcDbCurve::getPointAtDist", kNotBuilt},
    {L"AcDbCurve::getClosestPointTo", kNotBuilt},
    {L"AcDbCurve::getDistAtPoint", kNotBuilt},
    {L"AcDbBlockReference::Jig", kNotBuilt},
    {L"AcDbMText::actualWidth", kNotBuilt},
    {L"AcDbMText::actualHeight", kNotBuilt},
    {L"AcDbMText::setNormal", kNotBuilt},
    {L"AcDbMText::setDirection", kNotBuilt},
    {L"AcDbMText::setMask", kNotBuilt},
    {L"AcDbMText::direction", kNotBuilt},
    {L"AcDbMText::insert", kNotBuilt},
    {L"RectangleJig", kNotBuilt},
    {L"tv_tv-lineJig", kNotBuilt},
    {L"tv_tv-rotateJig", kNotBuilt},
    {L"tv_tv-multiRotateJig", kNotBuilt},
    {L"tv_tv-multiMoveJig", kNotBuilt},
    {L"tv_tv-entsel", kNotBuilt},
    {L"AcDbLeader::create", kNotBuilt},
    {L"tv_tv-showHelp", kNotBuilt},
    {L"tv_tv-SHGetFolderPath", kNotBuilt},
    {L"tv_tv-SHOpenFolderAndSelect", kNotBuilt},
    {L"tv_tv-shellExecute", kNotBuilt},
    {L"ed_editMultilineText", kNotBuilt},
    {L"tv_tv-customizeLabelGroup", kNotBuilt},
    {L"tv_tv-customizeLayers", kNotBuilt},
    {L"tv_tv-customizeTextStyles", kNotBuilt},
    {L"asin", tvAsin},
    {L"acos", tvAcos},
    {L"tv_tv-setColor", kNotBuilt},
    {L"tv_tv-setPlotStyle", kNotBuilt},
    {L"tv_tv-freezeInViewport", kNotBuilt},
    {L"ssgetPK", kNotBuilt},
    {L"ssgetCP", kNotBuilt},
    {L"ssgetC", kNotBuilt},
    {L"ssgetX-block", kNotBuilt},
    {L"ssgetX-circle", kNotBuilt},
    {L"ssgetX-polyline", kNotBuilt},
    {L"ssgetX-all", kNotBuilt},
    {L"tv_tv-leader-insert", tvLeaderInsert},
    {L"tv_tv-leader-setPoints", tvLeaderSetPoints},
    {L"tv_tv-leader-setBlock", tvLeaderSetBlock},
    {L"tv_tv-leader-setOffset", tvLeaderSetOffset},
    {L"tv_tv-leader-explode", tvLeaderExplode},
    {L"tv_tv-rand", tvRand},
    {L"AcDbMtext::lastLineWidth", kNotBuilt},
    {L"GetSystemMetrics::SM_CXSCREEN", kNotBuilt},
    {L"GetSystemMetrics::SM_CYSCREEN", kNotBuilt},
    {L"tv_tv-submitBug", kNotBuilt},
    {L"EditUserOptions", kNotBuilt},
    {L"tv_tv-safeContinue", kNotBuilt},
    {L"tv_tv-createLayer", kNotBuilt},
    {L"GetComputerName", tvGetComputerName},
    {L"XFolderDialog", kNotBuilt},
    {L"PathIsNetworkPath", tvPathIsNetworkPath},
    {L"CFileDialog", kNotBuilt},
    {L"tv_tv-getPoint", kNotBuilt},
    {L"tv_tv-getCorner", kNotBuilt},
    {L"tv_tv-intersectArcArc", kNotBuilt},
    {L"tv_tv-intersectArcLine", kNotBuilt},
    {L"tv_tv-intersectLineArc", kNotBuilt},
    {L"tv_tv-LayerSystemOptionsElec", kNotBuilt},
    {L"tv_tv-LayerSystemOptionsPlumb", kNotBuilt},
    {L"tv_tv-LayerSystemOptionsHVAC", kNotBuilt},
    {L"DownloadFile", kNotBuilt},
    {L"ExtractZip", kNotBuilt},
    {L"CreateZip", kNotBuilt},
    {L"GetTempPath", tvGetTempPath},
    {L"IsFileReadOnly", tvIsFileReadOnly},
    {L"CreateCompressedGuidString", kNotBuilt},
    {L"tv_tv-drawHanger", kNotBuilt},
    {L"tv_tv-drawTripleCenter", kNotBuilt},
    {L"tv_tv-getTripleCoord", kNotBuilt},
    {L"tv_tv-drawTripleTransition", kNotBuilt},
    {L"tv_tv-drawTripleElbow", kNotBuilt},
    {L"tv_tv-drawTripleWye", kNotBuilt},
    {L"tv_tv-drawTripleTakeoff", kNotBuilt},
    {L"tv_tv-drawTripleSkin", kNotBuilt},
    {L"tv_tv-tripleUnion", kNotBuilt},
    {L"tv_tv-explodeSolid", kNotBuilt},
    {L"acedSetStatusBarProgressMeterPos", kNotBuilt},
    {L"acedSetStatusBarProgressMeter", kNotBuilt},
    {L"acedRestoreStatusBar", kNotBuilt},
    {L"RegEnumKey", kNotBuilt},
    {L"AcDbFace::makeEdgeInvisibleAt", kNotBuilt},
    {L"AcDbEntity::getGeomExtents", kNotBuilt},
    {L"AcDbEntity::setColor", kNotBuilt},
    {L"AcDb2dPolyline::setCurveType", kNotBuilt},
    {L"tv::pow", tvPow},
    {L"tv_tv-setToDoDrawing", kNotBuilt},
    {L"tv_tv-getToDoDrawing", kNotBuilt},
    {L"signString", kNotBuilt},
    {L"verifyString", kNotBuilt},
    {L"tv_tv-createJigTimer", kNotBuilt},
    {L"tv_tv-killJigTimer", kNotBuilt},
    {L"tv_tv-enableAutoCADWindow", kNotBuilt},
    {L"tv_tv-disableAutoCADWindow", kNotBuilt},
    {L"tv_tv-sendToBack", kNotBuilt},
};

void defineTable(std::span<const LispFunction> table, int base, AcedFunction notBuilt) {
    for (std::size_t i = 0; i < table.size(); ++i) {
        const int code = base + static_cast<int>(i);
        acedDefun(table[i].name, code);
        acedRegFunc(table[i].callback != nullptr ? table[i].callback : notBuilt, code);
    }
}

static_assert(std::size(kDatabaseTable) == 62, "the database table has codes 0 to 61");

}  // namespace

std::span<const LispFunction> databaseFunctions() {
    return kDatabaseTable;
}

std::span<const LispFunction> generalFunctions() {
    return kGeneralTable;
}

int databaseTableLength() {
    return static_cast<int>(std::size(kDatabaseTable));
}

void defineDatabaseFunctions() {
    defineTable(kDatabaseTable, 0, notBuiltDatabaseFunction);
}

void defineGeneralFunctions() {
    defineTable(kGeneralTable, databaseTableLength(), notBuiltGeneralFunction);
}

void undefineTable(std::span<const LispFunction> table, int base) {
    for (std::size_t i = 0; i < table.size(); ++i) {
        const int code = base + static_cast<int>(i);
        acedRegFunc(nullptr, code);
        acedUndef(table[i].name, code);
    }
}

const ACHAR* functionNameForCode(int code) {
    if (code < 0) return nullptr;
    const auto index = static_cast<std::size_t>(code);
    if (index < std::size(kDatabaseTable)) return kDatabaseTable[index].name;
    if (index - std::size(kDatabaseTable) < std::size(kGeneralTable)) {
        return kGeneralTable[index - std::size(kDatabaseTable)].name;
    }
    return nullptr;
}

}  // namespace kelvo
