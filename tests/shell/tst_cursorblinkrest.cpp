// Text cursors rest after a spell without input and blink again at the next key or click.

#include "shell/CursorBlinkRest.h"

#include <QApplication>
#include <QLineEdit>
#include <QTest>

class CursorBlinkRestTest : public QObject {
    Q_OBJECT

private slots:
    void restsWhenIdleAndWakesOnInput()
    {
        QApplication::setCursorFlashTime(1000);
        QLineEdit box;
        {
            CursorBlinkRest rest(50);
            QTRY_COMPARE(QApplication::cursorFlashTime(), 0);
            QTest::keyClick(&box, Qt::Key_A);
            QCOMPARE(QApplication::cursorFlashTime(), 1000);
            QTRY_COMPARE(QApplication::cursorFlashTime(), 0);
            QTest::mouseClick(&box, Qt::LeftButton);
            QCOMPARE(QApplication::cursorFlashTime(), 1000);
            QTRY_COMPARE(QApplication::cursorFlashTime(), 0);
        }
        // Gone, it leaves the desktop's setting as it found it.
        QCOMPARE(QApplication::cursorFlashTime(), 1000);
    }
};

QTEST_MAIN(CursorBlinkRestTest)
#include "tst_cursorblinkrest.moc"
