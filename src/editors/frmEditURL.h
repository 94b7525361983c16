#pragma once

#include <QWidget>

class QLabel;
class QLineEdit;
class QPushButton;
class ShellLink;
class frmAlarmClock;
struct AlarmState;

// Edits one row's web address. The row is known only by the number shown in
// lblintIndex, counted from 1.
class frmEditURL : public QWidget {
    Q_OBJECT
public:
    frmEditURL(frmAlarmClock &table, const AlarmState &state, ShellLink &shell, QWidget *parent = nullptr);

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
    frmAlarmClock &m_table;
    const AlarmState &m_state;
    ShellLink &m_shell;
};
