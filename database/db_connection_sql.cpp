// CDBConnection: selects, action statements and stored queries.
#include "database/db_connection.h"
#include "database/lock_retry.h"
#include "database/table_cursor.h"

using kelvo::database::runWithLockRetry;

namespace {

// Hands every row of an open recordset to `sink`. The names are read once; only the
// values change from row to row.
void deliverRows(CDaoRecordset& recordset, CDBConnection::RowSink& sink) {
    if (recordset.IsBOF() || recordset.IsEOF()) return;
    const std::vector<std::wstring> names = kelvo::database::fieldNamesOf(recordset);
    VariantArray pairs(names.size() * 2);
    for (std::size_t i = 0; i < names.size(); ++i) pairs[2 * i] = COleVariant(names[i]);
    recordset.MoveFirst();
    while (!recordset.IsEOF()) {
        for (std::size_t i = 0; i < names.size(); ++i) {
            recordset.GetFieldValue(static_cast<int>(i), pairs[2 * i + 1]);
        }
        sink.row(pairs);
        recordset.MoveNext();
    }
}

}  // namespace

bool CDBConnection::select(const std::wstring& sql, RowSink& sink) {
    clearError();
    if (!database_.IsOpen()) return false;
    try {
        CDaoQueryDef query(&database_);
        query.Create(nullptr, sql.c_str());
        CDaoRecordset recordset(&database_);
        recordset.Open(&query, dbOpenSnapshot, 0);
        deliverRows(recordset, sink);
        recordset.Close();
        query.Close();
        return true;
    } catch (CDaoException* error) {
        recordError(error);
        return false;
    }
}

bool CDBConnection::execute(const std::wstring& sql, long& recordsAffected) {
    clearError();
    if (!requireWritableDatabase()) return false;
    try {
        // An action or structure statement runs in one transaction, so an attempt that
        // meets a locked file has changed nothing and can run again.
        runWithLockRetry([&] {
            CDaoQueryDef query(&database_);
            query.Create(nullptr, sql.c_str());
            query.Execute(dbFailOnError);
            recordsAffected = query.GetRecordsAffected();
            query.Close();
        });
        return true;
    } catch (CDaoException* error) {
        recordError(error);
        return false;
    }
}

bool CDBConnection::runQuery(const std::wstring& name, const VariantArray& parameters,
                             RowSink& sink) {
    clearError();
    if (!database_.IsOpen()) return false;
    try {
        CDaoQueryDef query(&database_);
        query.Open(name.c_str());
        for (std::size_t i = 0; i + 1 < parameters.size(); i += 2) {
            const COleVariant& parameter = parameters[i];
            if (parameter.vt != VT_BSTR) dao::throwError(dao::kItemNotFound);
            query.SetParamValue(parameter.bstrVal.c_str(), parameters[i + 1]);
        }
        CDaoRecordset recordset(&database_);
        recordset.Open(&query, dbOpenSnapshot, 0);
        deliverRows(recordset, sink);
        recordset.Close();
        query.Close();
        return true;
    } catch (CDaoException* error) {
        recordError(error);
        return false;
    }
}

bool CDBConnection::setQuerySql(const std::wstring& name, const std::wstring& sql) {
    clearError();
    if (!database_.IsOpen()) return false;
    try {
        runWithLockRetry([&] {
            CDaoQueryDef query(&database_);
            query.Open(name.c_str());
            query.SetSQL(sql.c_str());
            query.Close();
        });
        return true;
    } catch (CDaoException* error) {
        recordError(error);
        return false;
    }
}
