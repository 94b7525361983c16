#pragma once

#include "platform/Platform.h"

#include <QWidget>

class QLabel;
class QLineEdit;
class QPushButton;
class RowEdits;
class SecondaryHost;
struct AlarmState;

// Edits one row's sound file, offers the default path and plays the file as
// a test. The row is known only by the number in lblintIndex, from 1.
class frmEditWAVEFileNamePath : public QWidget {
    Q_OBJECT
public:
    frmEditWAVEFileNamePath(const Platform &platform, RowEdits &table, const AlarmState &state,
                            SecondaryHost &host, QWidget *parent = nullptr);

    // Starts editing row 0..12, whose sound file is now `path`.
    void editRow(int row, const QString &path);
    void Form_Load();
    void cmdApply_Click();
    void cmdDefaultPath_Click();
    void cmdSoundTest_Click();
    void cmdClearForm_Click();
    void txtEditWAVEFileNamePath_KeyUp(int keyCode);

    QLabel *lblintIndex = nullptr;
    QLineEdit *txtEditWAVEFileNamePath = nullptr;
    QPushButton *cmdSoundTest = nullptr;
    QPushButton *cmdDefaultPath = nullptr;
    QPushButton *cmdApply = nullptr;
    QPushButton *cmdClearForm = nullptr;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    const Platform m_platform;
    RowEdits &m_table;
    const AlarmState &m_state;
    SecondaryHost &m_host;
};
