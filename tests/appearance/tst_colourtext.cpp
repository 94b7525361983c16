#include "appearance/ColourText.h"

#include <QTest>

class TestColourText : public QObject {
    Q_OBJECT

private slots:
    void colour_data();
    void colour();
};

void TestColourText::colour_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("expected");

    QTest::newRow("hex with marker") << "&H00C000C0&" << 12583104;
    QTest::newRow("six digits are 32-bit") << "&HC000C0" << 12583104;
    QTest::newRow("four digits sign-extend") << "&HFFFF" << -1;
    QTest::newRow("four digits with marker") << "&HFFFF&" << 65535;
    QTest::newRow("positive 16-bit") << "&H7fff" << 32767;
    QTest::newRow("five digits") << "&H0FFFF" << 65535;
    QTest::newRow("eight digits") << "&HFFFFFFFF" << -1;
    QTest::newRow("digits end at junk") << "&HFFxyz" << 255;
    QTest::newRow("decimal") << "12583104" << 12583104;
    QTest::newRow("blanks around") << " 12 " << 12;
    QTest::newRow("negative") << "-5" << -5;
    QTest::newRow("exponent") << "1e3" << 1000;
    QTest::newRow("half to even") << "2.5" << 2;
    QTest::newRow("int32 max") << "2147483647" << 2147483647;
    for (const char *zero : {"", "&H123456789", "&H", "&HZZ", "&h10", "2147483648", "red", "True", " &HFF"})
        QTest::newRow(zero) << zero << 0;
}

void TestColourText::colour()
{
    QFETCH(QString, text);
    QFETCH(int, expected);
    QCOMPARE(colourFromText(text), qint32(expected));
}

QTEST_GUILESS_MAIN(TestColourText)
#include "tst_colourtext.moc"
