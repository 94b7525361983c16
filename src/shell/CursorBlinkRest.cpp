#include "shell/CursorBlinkRest.h"

#include <QApplication>
#include <QEvent>

CursorBlinkRest::CursorBlinkRest(int idleMs, QObject *parent)
    : QObject(parent), m_flashTime(QApplication::cursorFlashTime())
{
    m_idle.setSingleShot(true);
    m_idle.setInterval(idleMs);
    connect(&m_idle, &QTimer::timeout, this, [this] { rest(); });
    if (m_flashTime > 0) {
        qApp->installEventFilter(this);
        m_idle.start();
    }
}

CursorBlinkRest::~CursorBlinkRest()
{
    if (m_resting)
        QApplication::setCursorFlashTime(m_flashTime);
}

void CursorBlinkRest::rest()
{
    m_resting = true;
    // Zero shows the cursor steadily.
    QApplication::setCursorFlashTime(0);
}

bool CursorBlinkRest::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::KeyPress:
    case QEvent::MouseButtonPress:
    case QEvent::InputMethod:
        if (m_resting) {
            m_resting = false;
            QApplication::setCursorFlashTime(m_flashTime);
        }
        m_idle.start();
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}
