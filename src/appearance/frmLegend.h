#pragma once

#include <QWidget>
#include <array>

class QLabel;
class SecondaryHost;
struct AlarmState;

// Explains the row colours of the active scheme, one line per state, and
// the units of the countdown.
class frmLegend : public QWidget {
    Q_OBJECT
public:
    frmLegend(const AlarmState &state, SecondaryHost &host, QWidget *parent = nullptr);

    // Paints the lines in the scheme's colours; runs whenever the window
    // becomes active, so a legend shown after a colour change is current.
    void Form_Activate();

    QLabel *lblTitle = nullptr;
    std::array<QLabel *, 6> lblColours{};

protected:
    bool event(QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    const AlarmState &m_state;
    SecondaryHost &m_host;
};
