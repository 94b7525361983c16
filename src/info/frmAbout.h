#pragma once

#include "platform/Platform.h"

#include <QWidget>
#include <array>

class QLabel;
class ProgramSettings;
class SecondaryHost;

// The About box: version line, thanks, contact lines and pictures, with the
// egg hidden in the labels and the flag. Handlers are public so tests can run
// them as the events would.
class frmAbout : public QWidget {
    Q_OBJECT
public:
    frmAbout(const Platform &platform, ProgramSettings &settings, SecondaryHost &host, QWidget *parent = nullptr);

    void Form_Load();
    void lblAboutBox_DblClick(int index);
    void picCanadaFlag_MouseMove();

    // 0 video channel, 1 web site, 2 e-mail, 3 thanks, 4 version line.
    std::array<QLabel *, 5> lblAboutBox{};
    QLabel *lblEgg = nullptr;
    QLabel *picHoldAbout = nullptr;
    QLabel *picCanadaFlag = nullptr;
    QLabel *picPellowick = nullptr;
    QLabel *picOlderPellowick1 = nullptr;
    QLabel *picOlderPellowick2 = nullptr;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    void buildControls();

    // A copy: the aggregate holds only references, and the caller's may not
    // outlive this window.
    Platform m_platform;
    ProgramSettings &m_settings;
    SecondaryHost &m_host;
};
