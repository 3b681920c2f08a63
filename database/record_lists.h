// Records between the connection and LISP.
//
// A record travels from the connection as a flat array of variants, field name and value
// alternating ([name0, value0, name1, value1 ...]), and reaches LISP as a record list:
// ((name0 . value0) (name1 . value1) ...), each pair list-begin, name, dot, value,
// list-end, values converted as database/field_values.h says (the "s_" rule included).
// A result set reaches LISP as a list of record lists, one for each row, built as the
// connection hands the rows over.
//
// From LISP, a record list becomes the same name/value array; the arguments of a stored
// query become one flat array in which list structure is kept as the marker texts
// "*RTLB*", "*RTLE*" and "*RTDOTE*".
#pragma once

#include <cstddef>

#include "adsdef.h"
#include "dao_variant.h"
#include "database/db_connection.h"
#include "database/value_chain.h"

namespace kelvo::database {

// Appends (( name . value) ...) for the pairs at [first, last) of `pairs`.
void appendRecordList(ValueChain& chain, const VariantArray& pairs, std::size_t first,
                      std::size_t last);

// Sets the LISP result to the record list of `pairs` (nil for an empty array).
void returnRecord(const VariantArray& pairs);

// Collects the rows of a select or query as LISP record lists; returnAsResult sets the
// LISP result to their list (nil when there were none).
class ResultSetBuilder : public CDBConnection::RowSink {
public:
    void row(const VariantArray& pairs) override;
    void returnAsResult();

private:
    ValueChain chain_;
};

// A record list from LISP (the cursor at its first node) into name/value pairs:
// list-begin, dot and list-end nodes are skipped; each pair begins with a text name; a
// name with nothing after it ends the list; a name followed directly by a list-end has a
// null value. False when a pair does not begin with a text or a value does not convert.
bool recordFromLisp(const resbuf* list, VariantArray& pairs);

// The arguments after a query name, flattened; false when a value does not convert.
bool argumentsFromLisp(const resbuf* list, VariantArray& values);

}  // namespace kelvo::database
