#pragma once

#include <QString>
#include <QStringList>

namespace qelprn {

// The suite's tables as SQLite statements: every table and column the program and its master
// classes read or write, with the suite's own names. SQLite conventions: date-times are text
// "yyyy/mm/dd hh:mm:ss", dates text "yyyy/mm/dd", amounts and counts INTEGER, map positions REAL,
// everything else TEXT. Columns may hold Null, as in the suite's live databases.
QStringList suiteSchemaStatements();

// Creates (or completes) the schema in the SQLite file, creating the file when needed. False with
// the reason in *error when the file cannot be opened or a statement fails.
bool createSuiteSchema(const QString& sqliteFile, QString* error = nullptr);

} // namespace qelprn
