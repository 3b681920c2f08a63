// The kv_ functions of table structure, indexes and relations, after the data access
// object model: a table's fields (Name, Type, Size, Attributes, Required,
// AllowZeroLength, DefaultValue, OrdinalPosition), its indexes (Primary, Unique, Required,
// IgnoreNulls, Fields) and the database's relations (Table, ForeignTable, Attributes and
// field pairs), with that model's type and attribute numbers.
//
// Each needs an open database: without one it prints "No database is open." and answers
// nil. A name that the engine does not allow (empty, with . ! [ ], a leading blank, over
// 64 characters) is refused with the engine's error 3125; a table that is not there with
// 3078; a field, index or relation that is not there with 3265. Every failure prints one
// line through the error report (kv_lastError keeps it) and answers nil.
#pragma once

namespace kelvo::database {

int kvListTables();      // (kv_list_tables) -> ("Table" ...) in name order
int kvStructure();       // (kv_structure table) -> (field-description ...)
int kvListIndexes();     // (kv_list_indexes table [describe]) -> ("Index" ...) or descriptions
int kvIndexFields();     // (kv_indexFields table index) -> ("Field" "-Descending" ...)
int kvIndexUnique();     // (kv_indexUnique table index) -> T or nil
int kvFieldRequired();   // (kv_field_required table field) -> T or nil
int kvAttributes();      // (kv_attributes table field) -> the field's Attributes sum
int kvRelationCount();   // (kv_relationCount [table]) -> number of relations
int kvRelationExists();  // (kv_relationExists name | table foreign-table) -> T or nil
int kvRelationInfo();    // (kv_relationInfo name | position) -> relation description

// Changes: each needs a database that can be updated (else the engine's 3027), and a
// table that no cursor has open (else 3211).
int kvCreateTable();     // (kv_create_table table (field-description ...)
                         //   [(index-description ...)]) -> T
int kvDeleteTable();     // (kv_delete_table table) -> T
int kvRenameTable();     // (kv_rename_table table new-name) -> T
int kvCreateIndex();     // (kv_create_index table index fields [unique [primary
                         //   [ignore-nulls [required]]]]) -> T
int kvRelationDelete();  // (kv_relationDelete name) -> T

}  // namespace kelvo::database
