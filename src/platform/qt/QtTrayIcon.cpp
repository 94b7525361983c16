#include "platform/qt/QtTrayIcon.h"

#include "shell/TrayTip.h"

#include <QTimer>

QtTrayIcon::QtTrayIcon(const QIcon &icon) : m_icon(icon)
{
    QObject::connect(&m_icon, &QSystemTrayIcon::activated, &m_icon,
                     [this](QSystemTrayIcon::ActivationReason reason) {
                         if (!m_handler)
                             return;
                         if (reason == QSystemTrayIcon::DoubleClick)
                             m_handler(LeftDoubleClick);
                         else if (reason == QSystemTrayIcon::Context)
                             m_handler(RightButtonDown);
                     });
}

void QtTrayIcon::add(const QString &tipField)
{
    m_hidePending = false;
    m_icon.setToolTip(visibleTrayTip(tipField));
    if (!m_icon.isVisible())
        m_icon.show();
}

void QtTrayIcon::remove()
{
    m_hidePending = true;
    QTimer::singleShot(0, &m_icon, [this] {
        if (m_hidePending)
            m_icon.hide();
        m_hidePending = false;
    });
}

void QtTrayIcon::setMouseHandler(std::function<void(int message)> handler)
{
    m_handler = std::move(handler);
}
