#pragma once

#include <QString>

class AppDirectory;
class FileSystem;

// The database file shipped beside the program.
QString shippedDatabasePath(const AppDirectory &appDir);

// The database this user works with. The shipped file itself when the user
// may write to the program's folder (a build, a portable copy, an install in
// their home). Otherwise (an install under /usr) their own copy in their data
// folder, first made from the shipped file. Empty when neither exists.
QString locateDatabase(const AppDirectory &appDir, FileSystem &files);
