#include <QTest>

// After <QTest> on purpose: the header must survive Qt's "slots" macro.
#include "table/RowState.h"

#include <limits>

Q_DECLARE_METATYPE(RowState)

class TestRowState : public QObject {
    Q_OBJECT

private slots:
    void classify_data();
    void classify();
    void colour_data();
    void colour();
    void customSlots();
};

void TestRowState::classify_data()
{
    QTest::addColumn<int>("seconds");
    QTest::addColumn<RowState>("dated");
    QTest::addColumn<RowState>("daily");

    using S = RowState;
    constexpr int min = std::numeric_limits<qint32>::min();
    constexpr int max = std::numeric_limits<qint32>::max();
    QTest::newRow("INT_MAX") << max << S::FarAhead << S::FarAhead;
    QTest::newRow("3601") << 3601 << S::FarAhead << S::FarAhead;
    QTest::newRow("3600") << 3600 << S::WithinHour << S::WithinHour;
    QTest::newRow("481") << 481 << S::WithinHour << S::WithinHour;
    QTest::newRow("480") << 480 << S::WithinEight << S::WithinEight;
    QTest::newRow("1") << 1 << S::WithinEight << S::WithinEight;
    QTest::newRow("0") << 0 << S::Sounded << S::PassedLong;
    QTest::newRow("-1") << -1 << S::Sounded << S::JustPassed;
    QTest::newRow("-300") << -300 << S::Sounded << S::JustPassed;
    QTest::newRow("-301") << -301 << S::Sounded << S::PassedWithinHour;
    QTest::newRow("-3600") << -3600 << S::Sounded << S::PassedWithinHour;
    QTest::newRow("-3601") << -3601 << S::Sounded << S::PassedLong;
    QTest::newRow("INT_MIN") << min << S::Sounded << S::PassedLong;
}

void TestRowState::classify()
{
    QFETCH(int, seconds);
    QFETCH(RowState, dated);
    QFETCH(RowState, daily);
    QCOMPARE(classifyRow(true, seconds), dated);
    QCOMPARE(classifyRow(false, seconds), daily);
}

void TestRowState::colour_data()
{
    QTest::addColumn<RowState>("state");
    QTest::addColumn<bool>("dated");
    QTest::addColumn<int>("regular");
    QTest::addColumn<int>("matrix");
    QTest::addColumn<int>("customSlot"); // 0 = colour left alone

    using S = RowState;
    QTest::newRow("far ahead dated") << S::FarAhead << true << 0xFFFFFF << 0x008000 << 3;
    QTest::newRow("far ahead daily") << S::FarAhead << false << 0xFFFFFF << 0x008000 << 0;
    QTest::newRow("within hour") << S::WithinHour << false << 0x00FFFF << 0x00C000 << 5;
    QTest::newRow("within eight") << S::WithinEight << true << 0x00FF00 << 0x00FF00 << 4;
    QTest::newRow("sounded") << S::Sounded << true << 0x0000FF << 0x00FFFF << 6;
    QTest::newRow("just passed") << S::JustPassed << false << 0x0000FF << 0x00FFFF << 4;
    QTest::newRow("passed within hour") << S::PassedWithinHour << false << 0x80FF80 << 0x80FF80 << 7;
    QTest::newRow("passed long") << S::PassedLong << false << 0xFFFFFF << 0x007007 << 3;
}

void TestRowState::colour()
{
    QFETCH(RowState, state);
    QFETCH(bool, dated);
    QFETCH(int, regular);
    QFETCH(int, matrix);
    QFETCH(int, customSlot);

    CustomColours custom;
    for (int n = 1; n <= 10; ++n)
        custom.setSlot(n, 0x010000 * n); // distinct per slot

    QCOMPARE(rowStateColour(state, dated, 0, custom), std::optional<qint32>(regular));
    QCOMPARE(rowStateColour(state, dated, 1, custom), std::optional<qint32>(matrix));
    const std::optional<qint32> expectedCustom =
        customSlot ? std::optional<qint32>(0x010000 * customSlot) : std::nullopt;
    QCOMPARE(rowStateColour(state, dated, 2, custom), expectedCustom);
    for (int scheme : {-1, 3, 5})
        QCOMPARE(rowStateColour(state, dated, scheme, custom), std::optional<qint32>());
}

void TestRowState::customSlots()
{
    CustomColours custom;
    custom.setSlot(10, 100);
    custom.setSlot(11, 5); // ignored
    QCOMPARE(custom.slot(10), 100);
    QCOMPARE(custom.slot(11), 0);
    QCOMPARE(custom.slot(0), 0);
}

QTEST_GUILESS_MAIN(TestRowState)
#include "tst_rowstate.moc"
