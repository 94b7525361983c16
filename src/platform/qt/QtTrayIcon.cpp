#include "platform/qt/QtTrayIcon.h"

QString visibleTipText(const QString &tipField)
{
    const qsizetype nul = tipField.indexOf(QChar(0));
    if (nul >= 0)
        return tipField.left(nul);
    qsizetype end = tipField.size();
    while (end > 0 && tipField.at(end - 1) == QLatin1Char(' '))
        --end;
    return tipField.left(end);
}

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
    m_icon.setToolTip(visibleTipText(tipField));
    m_icon.show();
}

void QtTrayIcon::remove()
{
    m_icon.hide();
}

void QtTrayIcon::setMouseHandler(std::function<void(int message)> handler)
{
    m_handler = std::move(handler);
}
