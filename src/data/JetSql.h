#pragma once

#include <QString>

// The program's statements are written in the Jet dialect. This gives each one
// its meaning in SQLite; everything SQLite already reads the same way
// (True/False, ORDER BY, a trailing ";") passes through untouched.
QString jetToSqlite(const QString &jetStatement);
