#pragma once

#include <QObject>
#include <QTimer>

// Text cursors stop blinking after a spell without typing or clicking, as
// on GNOME, and start again at the next key or click. A blinking cursor
// repaints twice a second for as long as the window has the focus; an
// alarm clock is left open for days.
class CursorBlinkRest : public QObject {
public:
    explicit CursorBlinkRest(int idleMs = 10000, QObject *parent = nullptr);
    ~CursorBlinkRest() override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void rest();

    QTimer m_idle;
    int m_flashTime;
    bool m_resting = false;
};
