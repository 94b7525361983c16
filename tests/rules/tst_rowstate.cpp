#include <QTest>

// After <QTest> on purpose: the header must survive Qt's "slots" macro.
#include "rules/RowState.h"

#include <limits>

Q_DECLARE_METATYPE(RowState)

class TestRowState : public QObject {
    Q_OBJECT

private slots:
    // Seconds left, dated or daily, the state and its Regular, Matrix and Custom (slot; 0 = left alone) colours.
    void stateAndColour_data()
    {
        QTest::addColumn<int>("seconds");
        QTest::addColumn<bool>("dated");
        QTest::addColumn<RowState>("state");
        QTest::addColumn<int>("regular");
        QTest::addColumn<int>("matrix");
        QTest::addColumn<int>("customSlot");
        using S = RowState;
        QTest::newRow("3601 dated") << 3601 << true << S::FarAhead << 0xFFFFFF << 0x008000 << 3;
        QTest::newRow("3601 daily") << 3601 << false << S::FarAhead << 0xFFFFFF << 0x008000 << 0;
        QTest::newRow("3600") << 3600 << false << S::WithinHour << 0x00FFFF << 0x00C000 << 5;
        QTest::newRow("481") << 481 << true << S::WithinHour << 0x00FFFF << 0x00C000 << 5;
        QTest::newRow("480") << 480 << false << S::WithinEight << 0x00FF00 << 0x00FF00 << 4;
        QTest::newRow("0 dated") << 0 << true << S::Sounded << 0x0000FF << 0x00FFFF << 6;
        QTest::newRow("0 daily") << 0 << false << S::PassedLong << 0xFFFFFF << 0x007007 << 3;
        QTest::newRow("-1 daily") << -1 << false << S::JustPassed << 0x0000FF << 0x00FFFF << 4;
        QTest::newRow("-300 daily") << -300 << false << S::JustPassed << 0x0000FF << 0x00FFFF << 4;
        QTest::newRow("-301 daily") << -301 << false << S::PassedWithinHour << 0x80FF80 << 0x80FF80 << 7;
        QTest::newRow("-3600 daily") << -3600 << false << S::PassedWithinHour << 0x80FF80 << 0x80FF80 << 7;
        QTest::newRow("-3601 daily") << -3601 << false << S::PassedLong << 0xFFFFFF << 0x007007 << 3;
        QTest::newRow("INT_MIN daily") << std::numeric_limits<qint32>::min() << false << S::PassedLong << 0xFFFFFF << 0x007007 << 3;
    }
    void stateAndColour()
    {
        QFETCH(int, seconds);
        QFETCH(bool, dated);
        QFETCH(RowState, state);
        QFETCH(int, regular);
        QFETCH(int, matrix);
        QFETCH(int, customSlot);
        CustomColours custom;
        for (int n = 1; n <= 10; ++n)
            custom.setSlot(n, 0x010000 * n);

        QCOMPARE(classifyRow(dated, seconds), state);
        QCOMPARE(rowStateColour(state, dated, 0, custom), std::optional<qint32>(regular));
        QCOMPARE(rowStateColour(state, dated, 1, custom), std::optional<qint32>(matrix));
        QCOMPARE(rowStateColour(state, dated, 2, custom), customSlot ? std::optional<qint32>(0x010000 * customSlot) : std::nullopt);
        QCOMPARE(rowStateColour(state, dated, 3, custom), std::optional<qint32>());
    }
};

QTEST_GUILESS_MAIN(TestRowState)
#include "tst_rowstate.moc"
