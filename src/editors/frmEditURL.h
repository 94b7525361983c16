#pragma once

#include <QWidget>

class QLabel;
class QLineEdit;
class QPushButton;
class RowEdits;
class SecondaryHost;
struct AlarmState;

// Edits one row's web address. The row is known only by the number shown in
// lblintIndex, counted from 1.
class frmEditURL : public QWidget {
    Q_OBJECT
public:
    frmEditURL(RowEdits &table, const AlarmState &state, SecondaryHost &host, QWidget *parent = nullptr);

    // Starts editing row 0..12, whose address is now `address`.
    void editRow(int row, const QString &address);
    void Form_Load();
    void cmdApply_Click();
    void cmdClearForm_Click();
    void txtEditURL_KeyUp(int keyCode);

    QLabel *lblintIndex = nullptr;
    QLineEdit *txtEditURL = nullptr;
    QPushButton *cmdApply = nullptr;
    QPushButton *cmdClearForm = nullptr;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    RowEdits &m_table;
    const AlarmState &m_state;
    SecondaryHost &m_host;
};
