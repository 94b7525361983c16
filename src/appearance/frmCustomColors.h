#pragma once

#include "platform/Platform.h"

#include <QWidget>
#include <array>

class QLabel;
class QLineEdit;
class QPushButton;
class Database;
class CustomColorsHost;
struct AlarmState;

// Lets the user type or pick custom colour slots 1 to 8, preview them in the
// legend, and apply them as the Custom scheme.
class frmCustomColors : public QWidget {
    Q_OBJECT
public:
    frmCustomColors(const Platform &platform, Database &db, AlarmState &state, CustomColorsHost &host,
                    QWidget *parent = nullptr);

    void subLoadProgramSettingCustomColours();
    // Slot n is 1..8; picker and swatch indexes are 0..7.
    void txtCustomColours_KeyUp(int n, int keyCode);
    void txtCustomColours_GotFocus(int n);
    void cmdColorPicker_Click(int index);
    void cmdShowLegend_Click();
    void cmdApply_Click();
    void cmdClearForm_Click();
    void button_GotFocus();

    std::array<QLabel *, 8> lblCustomColours{};
    std::array<QLineEdit *, 8> txtCustomColours{};
    std::array<QLabel *, 8> lblFillColor{};
    std::array<QPushButton *, 8> cmdColorPicker{};
    QPushButton *cmdShowLegend = nullptr;
    QPushButton *cmdApply = nullptr;
    QPushButton *cmdClearForm = nullptr;
    QLabel *lblHelpTip = nullptr;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    void preview(int n);

    const Platform m_platform;
    Database &m_db;
    AlarmState &m_state;
    CustomColorsHost &m_host;
    // The picker starts from the colour it last returned, as a colour
    // dialog control keeps its own colour.
    qint32 m_pickerColour = 0;
    // Colours previewed and not applied: closing puts the stored ones back.
    bool m_previewed = false;
};
