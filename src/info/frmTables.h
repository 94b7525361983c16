#pragma once

#include <QWidget>

class QFrame;

// A read-only sheet of the two database tables and their columns. Columns in
// red are stored but not used by the program. It holds only static labels:
// no database access, no handlers.
class frmTables : public QWidget {
    Q_OBJECT
public:
    explicit frmTables(QWidget *parent = nullptr);

    // The alarm rows table and the settings table.
    QFrame *Picture2 = nullptr;
    QFrame *Picture1 = nullptr;
};
