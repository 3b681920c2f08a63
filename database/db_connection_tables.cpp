// CDBConnection: table cursors, movement, seek and the record writes.
#include <cwctype>

#include "adslib.h"
#include "dao_errors.h"
#include "database/db_connection.h"
#include "database/lock_retry.h"
#include "database/table_cursor.h"

namespace kelvo::database {

bool sameTableName(std::wstring_view a, std::wstring_view b) {
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (std::towupper(a[i]) != std::towupper(b[i])) return false;
    }
    return true;
}

std::vector<std::wstring> fieldNamesOf(CDaoRecordset& recordset) {
    std::vector<std::wstring> names(static_cast<std::size_t>(recordset.GetFieldCount()));
    for (std::size_t i = 0; i < names.size(); ++i) {
        CDaoFieldInfo info;
        recordset.GetFieldInfo(static_cast<int>(i), info, AFX_DAO_PRIMARY_INFO);
        names[i] = std::move(info.m_strName);
    }
    return names;
}

void readPairs(CDaoRecordset& recordset, const std::vector<std::wstring>& names,
               VariantArray& record) {
    record.resize(names.size() * 2);
    for (std::size_t i = 0; i < names.size(); ++i) {
        COleVariant& name = record[2 * i];
        name.vt = VT_BSTR;
        name.bstrVal = names[i];
        recordset.GetFieldValue(static_cast<int>(i), record[2 * i + 1]);
    }
}

}  // namespace kelvo::database

using kelvo::database::readPairs;
using kelvo::database::runWithLockRetry;

CDBConnection::TableCursor* CDBConnection::currentTable() const {
    return hasCurrentTable() ? tables_[current_].get() : nullptr;
}

std::size_t CDBConnection::findTable(const std::wstring& table) const {
    for (std::size_t i = 0; i < tables_.size(); ++i) {
        if (kelvo::database::sameTableName(tables_[i]->name, table)) return i;
    }
    return tables_.size();
}

bool CDBConnection::openTable(const std::wstring& table, const std::wstring& index) {
    clearError();
    if (!database_.IsOpen()) return false;
    const std::size_t found = findTable(table);
    try {
        if (found < tables_.size()) {
            if (!index.empty()) tables_[found]->recordset.SetCurrentIndex(index.c_str());
            current_ = found;
            return true;
        }
        auto cursor = std::make_unique<TableCursor>(&database_);
        cursor->recordset.Open(dbOpenTable, table.c_str(), 0);
        if (database_.CanUpdate()) cursor->recordset.SetLockingMode(true);
        if (!index.empty()) cursor->recordset.SetCurrentIndex(index.c_str());
        cursor->name = cursor->recordset.GetName();
        cursor->fieldNames = kelvo::database::fieldNamesOf(cursor->recordset);
        tables_.push_back(std::move(cursor));
        current_ = tables_.size() - 1;
        return true;
    } catch (CDaoException* error) {
        recordError(error);
        return false;
    }
}

void CDBConnection::closeTable() {
    if (!hasCurrentTable()) return;
    tables_.erase(tables_.begin() + static_cast<std::ptrdiff_t>(current_));
    current_ = kNoTable;
}

void CDBConnection::closeAllTables() {
    tables_.clear();
    current_ = kNoTable;
}

std::wstring CDBConnection::currentTableName() const {
    const TableCursor* table = currentTable();
    return table != nullptr ? table->name : std::wstring();
}

std::wstring CDBConnection::currentIndexName() {
    TableCursor* table = currentTable();
    if (table == nullptr) return {};
    try {
        return table->recordset.GetCurrentIndex();
    } catch (CDaoException* error) {
        error->Delete();
        return {};
    }
}

bool CDBConnection::readCurrent(TableCursor& table, VariantArray& record) {
    try {
        CDaoRecordset& recordset = table.recordset;
        if (recordset.IsBOF() || recordset.IsEOF()) return false;
        readPairs(recordset, table.fieldNames, record);
        return true;
    } catch (CDaoException* error) {
        recordError(error);
        return false;
    }
}

bool CDBConnection::readRecord(VariantArray& record) {
    clearError();
    TableCursor* table = currentTable();
    return table != nullptr && database_.IsOpen() && readCurrent(*table, record);
}

bool CDBConnection::moveFirst(VariantArray& record) {
    clearError();
    TableCursor* table = currentTable();
    if (table == nullptr) return false;
    try {
        CDaoRecordset& recordset = table->recordset;
        if (recordset.IsEOF() && recordset.IsBOF()) return false;
        recordset.MoveFirst();
    } catch (CDaoException* error) {
        recordError(error);
        return false;
    }
    return readCurrent(*table, record);
}

bool CDBConnection::moveLast(VariantArray& record) {
    clearError();
    TableCursor* table = currentTable();
    if (table == nullptr) return false;
    try {
        CDaoRecordset& recordset = table->recordset;
        if (recordset.IsEOF() && recordset.IsBOF()) return false;
        recordset.MoveLast();
    } catch (CDaoException* error) {
        recordError(error);
        return false;
    }
    return readCurrent(*table, record);
}

bool CDBConnection::skip(long count, VariantArray& record) {
    clearError();
    TableCursor* table = currentTable();
    if (table == nullptr) return false;
    try {
        CDaoRecordset& recordset = table->recordset;
        const bool forward = count > 0 && !recordset.IsEOF();
        const bool backward = count < 0 && !recordset.IsBOF();
        if (!forward && !backward) return false;
        recordset.Move(count);
    } catch (CDaoException* error) {
        recordError(error);
        return false;
    }
    return readCurrent(*table, record);
}

bool CDBConnection::seek(const VariantArray& keys, VariantArray& record) {
    clearError();
    TableCursor* table = currentTable();
    if (table == nullptr) return false;
    try {
        CDaoRecordset& recordset = table->recordset;
        if (recordset.GetCurrentIndex().empty()) return false;
        if (!recordset.Seek(L"=", keys.data(), static_cast<int>(keys.size()))) return false;
    } catch (CDaoException* error) {
        recordError(error);
        return false;
    }
    return readCurrent(*table, record);
}

bool CDBConnection::recordCount(long& count) {
    clearError();
    TableCursor* table = currentTable();
    if (table == nullptr) return false;
    try {
        count = table->recordset.GetRecordCount();
        return true;
    } catch (CDaoException* error) {
        recordError(error);
        return false;
    }
}

bool CDBConnection::requireWritableTable() {
    return hasCurrentTable() && requireWritableDatabase();
}

// Sets each named field in the edit buffer. A value that cannot be set is told on the
// command line and left out; the other fields are still written.
void CDBConnection::writeFields(TableCursor& table, const VariantArray& pairs) {
    for (std::size_t i = 0; i + 1 < pairs.size(); i += 2) {
        try {
            table.recordset.SetFieldValue(pairs[i].bstrVal.c_str(), pairs[i + 1]);
        } catch (CDaoException* error) {
            acutPrintf(L"\nAppend error: %s", error->message().c_str());
            error->Delete();
        }
    }
}

namespace {

// Drops a pending edit buffer after a failed attempt, so that the next one starts clean.
template <typename Body>
void editAttempt(CDaoRecordset& recordset, Body&& body) {
    try {
        body();
    } catch (CDaoException*) {
        if (recordset.GetEditMode() != dbEditNone) recordset.CancelUpdate();
        throw;
    }
}

// The values of the named fields in the record as the cursor last read it (an empty
// variant for a name the table lacks, which the field writer reports).
std::vector<COleVariant> namedValues(CDaoRecordset& recordset, const VariantArray& pairs) {
    std::vector<COleVariant> values;
    for (std::size_t i = 0; i + 1 < pairs.size(); i += 2) {
        try {
            values.push_back(recordset.GetFieldValue(pairs[i].bstrVal.c_str()));
        } catch (CDaoException* error) {
            error->Delete();
            values.emplace_back();
        }
    }
    return values;
}

}  // namespace

bool CDBConnection::replace(const VariantArray& pairs, VariantArray& record) {
    clearError();
    if (!requireWritableTable()) return false;
    TableCursor& table = *currentTable();
    CDaoRecordset& recordset = table.recordset;
    try {
        // The values LISP last read. Edit reads the record again as committed; when another
        // process changed a field that is about to be written since, the caller's value
        // may be built on the old one, and writing it would undo that change unseen: the
        // replace is refused (DAO 3197), and the cursor holds the record as committed.
        const std::vector<COleVariant> lastRead = namedValues(recordset, pairs);
        runWithLockRetry([&] {
            editAttempt(recordset, [&] {
                recordset.Edit();
                if (namedValues(recordset, pairs) != lastRead) dao::throwError(dao::kWriteConflict);
                writeFields(table, pairs);
                recordset.Update();
            });
        });
    } catch (CDaoException* error) {
        recordError(error);
        return false;
    }
    return readCurrent(table, record);
}

bool CDBConnection::append(bool /*flagged*/, const VariantArray& pairs, VariantArray& record) {
    clearError();
    if (!requireWritableTable()) return false;
    TableCursor& table = *currentTable();
    CDaoRecordset& recordset = table.recordset;
    try {
        runWithLockRetry([&] {
            editAttempt(recordset, [&] {
                recordset.AddNew();
                writeFields(table, pairs);
                recordset.Update();
            });
        });
        recordset.SetBookmark(recordset.GetLastModifiedBookmark());
    } catch (CDaoException* error) {
        recordError(error);
        return false;
    }
    return readCurrent(table, record);
}

bool CDBConnection::deleteRecord() {
    clearError();
    if (!requireWritableTable()) return false;
    CDaoRecordset& recordset = currentTable()->recordset;
    try {
        runWithLockRetry([&] { recordset.Delete(); });
        return true;
    } catch (CDaoException* error) {
        recordError(error);
        return false;
    }
}
