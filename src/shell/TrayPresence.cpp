#include "shell/TrayPresence.h"

#include "links/AlarmState.h"
#include "platform/TrayIcon.h"
#include "rules/TrayTip.h"
#include "shell/FrontWindow.h"

#include <QCursor>
#include <QMenu>
#include <QWidget>

namespace {

// A tray host that went away is noticed within this; the window is back on
// screen well within 5 s.
constexpr int kHostCheckMs = 2000;

} // namespace

TrayPresence::TrayPresence(TrayIcon &tray, QWidget &window, AlarmState &state, QMenu *programMenu)
    : m_tray(tray), m_window(window), m_state(state), m_programMenu(programMenu)
{
    m_tray.setMouseHandler([this](int message) { mouseMessage(message); });
    m_tray.setMenu(programMenu);
    m_hostCheck.setInterval(kHostCheckMs);
    m_hostCheck.callOnTimeout([this] { checkTrayHost(); });
}

TrayPresence::~TrayPresence()
{
    m_tray.setMouseHandler({});
    m_tray.setMenu(nullptr);
}

void TrayPresence::subMinimizeToTray(bool bHideForm, const QString &zMessage)
{
    if (bHideForm) {
        m_state.intMDIWindowState = 1;
        // Without a tray host nothing on screen could bring a hidden window
        // back: it stays minimized on the task bar instead.
        if (m_tray.available()) {
            m_window.hide();
            m_hostCheck.start();
        } else {
            m_window.setWindowState(m_window.windowState() | Qt::WindowMinimized);
        }
    }
    m_tray.add(visibleTrayTip(trayTipField(m_programName, zMessage)));
}

void TrayPresence::subRemoveTrayIcon() { m_tray.remove(); }

void TrayPresence::mouseMessage(int message)
{
    if (message == TrayIcon::LeftDoubleClick)
        bringBack();
    else if (message == TrayIcon::RightButtonDown)
        m_programMenu->popup(QCursor::pos());
}

void TrayPresence::bringBack()
{
    m_hostCheck.stop();
    m_state.bEvaluateNow = true;
    m_state.intMDIWindowState = 0;
    bringToFront(m_window);
}

void TrayPresence::checkTrayHost()
{
    if (m_window.isVisible())
        m_hostCheck.stop(); // back already, by other means
    else if (!m_tray.available())
        bringBack();
}
