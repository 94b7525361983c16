#include "shell/TrayTip.h"

#include <QTest>

class TestTrayTip : public QObject {
    Q_OBJECT

private slots:
    void field_data();
    void field();
    void visible();
};

void TestTrayTip::field_data()
{
    QTest::addColumn<int>("nameLength");
    QTest::addColumn<QString>("message");
    QTest::addColumn<QString>("shown"); // the text before the NUL; N = name

    const QString clickMe = QStringLiteral("] Double LEFT Click me.");
    const QString msg = QStringLiteral("Alarm at 07:30");
    for (int n : {10, 15, 16, 39})
        QTest::addRow("%d, no message", n) << n << "" << QString('[' + QString(n, 'N') + clickMe);
    // From 40 characters on the text fills the field and its NUL is cut off.
    QTest::newRow("40, no message") << 40 << "" << QString('[' + QString(40, 'N') + clickMe);
    QTest::newRow("60, no message") << 60 << "" << QString('[' + QString(60, 'N') + "] D");
    QTest::newRow("10, message") << 10 << msg << QString('[' + QString(10, 'N') + "..]" + msg);
    for (int n : {15, 16, 40, 60})
        QTest::addRow("%d, message", n) << n << msg << QString('[' + QString(15, 'N') + "..]" + msg);
    QTest::newRow("long message") << 16 << QString(60, 'm') << QString('[' + QString(15, 'N') + "..]" + QString(45, 'm'));
}

void TestTrayTip::field()
{
    QFETCH(int, nameLength);
    QFETCH(QString, message);
    QFETCH(QString, shown);

    const QString field = trayTipField(QString(nameLength, QLatin1Char('N')), message);
    if (shown.size() < 64)
        QCOMPARE(field, (shown + QChar(0)).leftJustified(64, QLatin1Char(' ')));
    else
        QCOMPARE(field, shown);
    QCOMPARE(visibleTrayTip(field), shown);
}

void TestTrayTip::visible()
{
    const QChar nul(0);
    QCOMPARE(visibleTrayTip(QString("ab" + QString(nul) + "cd" + nul)), QStringLiteral("ab"));
    QCOMPARE(visibleTrayTip(QString("ab  " + QString(nul) + "  ")), QStringLiteral("ab  "));
    QCOMPARE(visibleTrayTip(QStringLiteral("  ab  ")), QStringLiteral("  ab"));
    QCOMPARE(visibleTrayTip(QString()), QString());
}

QTEST_GUILESS_MAIN(TestTrayTip)
#include "tst_traytip.moc"
