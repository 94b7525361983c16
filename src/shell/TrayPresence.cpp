#include "shell/TrayPresence.h"

#include "data/ProgramSettings.h"
#include "links/AlarmState.h"
#include "platform/TrayIcon.h"
#include "rules/TrayTip.h"

#include <QCursor>
#include <QMenu>
#include <QWidget>

TrayPresence::TrayPresence(TrayIcon &tray, QWidget &window, AlarmState &state, ProgramSettings &settings,
                           QMenu *programMenu)
    : m_tray(tray), m_window(window), m_state(state), m_settings(settings), m_programMenu(programMenu)
{
    m_tray.setMouseHandler([this](int message) { mouseMessage(message); });
}

TrayPresence::~TrayPresence() { m_tray.setMouseHandler({}); }

void TrayPresence::subMinimizeToTray(bool bHideForm, const QString &zMessage)
{
    if (bHideForm) {
        m_state.intMDIWindowState = 1;
        // Without a tray host nothing on screen could bring a hidden window
        // back: it stays minimized on the task bar instead.
        if (m_tray.available())
            m_window.hide();
        else
            m_window.setWindowState(m_window.windowState() | Qt::WindowMinimized);
    }
    m_tray.add(visibleTrayTip(trayTipField(m_settings.subReturnAlarmclockName(), zMessage)));
}

void TrayPresence::subRemoveTrayIcon() { m_tray.remove(); }

void TrayPresence::mouseMessage(int message)
{
    if (message == TrayIcon::LeftDoubleClick) {
        m_state.bEvaluateNow = true;
        m_state.intMDIWindowState = 0;
        m_window.setWindowState(m_window.windowState() & ~(Qt::WindowMinimized | Qt::WindowMaximized));
        m_window.show();
        m_window.raise();
        m_window.activateWindow();
    } else if (message == TrayIcon::RightButtonDown) {
        m_programMenu->popup(QCursor::pos());
    }
}
