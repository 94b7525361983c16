// The About window: the version line from the database and the executable,
// the egg in its labels and flag, and the close sequence.

#include "data/Database.h"
#include "data/ProgramSettings.h"
#include "fakes/FakePlatform.h"
#include "fakes/TestDatabase.h"
#include "info/frmAbout.h"
#include "shell/ShellLink.h"

#include <QLabel>
#include <QTest>

namespace {

// Records what the window asks of the main window.
class RecordingShell : public ShellLink {
public:
    QStringList calls;

    void setMenuPair(MenuPair, bool) override { calls << QStringLiteral("setMenuPair"); }
    bool questionsLimited() const override { return false; }
    void subMinimizeToTray(bool, const QString &) override { calls << QStringLiteral("subMinimizeToTray"); }
    void subRemoveTrayIcon() override { calls << QStringLiteral("subRemoveTrayIcon"); }
    void restoreMainWindow() override { calls << QStringLiteral("restoreMainWindow"); }
    void subResetMainWindowSize() override { calls << QStringLiteral("subResetMainWindowSize"); }
    void subUnloadSecondaryForms() override { calls << QStringLiteral("subUnloadSecondaryForms"); }
    void maximizeTableWindow() override { calls << QStringLiteral("maximizeTableWindow"); }
    void subApplyMDIProgramSettings() override { calls << QStringLiteral("subApplyMDIProgramSettings"); }
    QWidget *mainPictureTarget() override { return nullptr; }
};

struct Fixture {
    FakePlatform fp;
    Database db{fp.appDir, fp.messages, fp.end};
    ProgramSettings settings{db};
    RecordingShell shell;
};

bool shown(const QWidget *w)
{
    return !w->isHidden();
}

// A real double click ends with the button up. QTest's leaves it down, and
// later moves would then arrive as drags aimed at this widget.
void doubleClick(QWidget *w, Qt::MouseButton button)
{
    QTest::mouseDClick(w, button);
    QTest::mouseRelease(w, button);
}

} // namespace

class AboutTest : public QObject {
    Q_OBJECT

private slots:
    void versionLineJoinsStoredAndExecutableVersions_data()
    {
        QTest::addColumn<int>("major");
        QTest::addColumn<int>("minor");
        QTest::addColumn<int>("revision");
        QTest::addColumn<QString>("stored"); // null: leave the shipped record alone
        QTest::addColumn<QString>("expected");
        QTest::newRow("shipped 1.00, exe 1.0.5") << 1 << 0 << 5 << QString() << "Version: 1.00 [EXE: 1.05]";
        QTest::newRow("shipped 1.00, exe 2.1.12") << 2 << 1 << 12 << QString() << "Version: 1.00 [EXE: 2.112]";
        QTest::newRow("stored 3.7b, exe 1.0.5") << 1 << 0 << 5 << "3.7b" << "Version: 3.7b [EXE: 1.05]";
        QTest::newRow("stored 10 chars, exe 2.1.12")
            << 2 << 1 << 12 << "2024.06.01" << "Version: 2024.06.01 [EXE: 2.112]";
        QTest::newRow("stored empty, exe 10.20.0") << 10 << 20 << 0 << "" << "Version:  [EXE: 10.200]";
    }
    void versionLineJoinsStoredAndExecutableVersions()
    {
        QFETCH(int, major);
        QFETCH(int, minor);
        QFETCH(int, revision);
        QFETCH(QString, stored);
        QFETCH(QString, expected);

        Fixture f;
        f.fp.version.maj = major;
        f.fp.version.min = minor;
        f.fp.version.rev = revision;
        if (!stored.isNull()) {
            TestDatabase peek(f.fp.testDir.dbPath());
            QVERIFY(peek.exec(QStringLiteral("UPDATE tblprogramsetting SET strVersion = ?"), {stored}));
        }
        frmAbout w(f.fp.platform(), f.settings, f.shell);
        QCOMPARE(w.lblAboutBox[4]->text(), expected);
        QVERIFY(f.fp.messages.shown.isEmpty());
        QVERIFY(f.shell.calls.isEmpty());
    }

    void withoutASettingsRecordTheVersionFallsBack()
    {
        Fixture f;
        {
            TestDatabase peek(f.fp.testDir.dbPath());
            QVERIFY(peek.exec(QStringLiteral("DELETE FROM tblprogramsetting")));
        }
        frmAbout w(f.fp.platform(), f.settings, f.shell);
        QCOMPARE(w.lblAboutBox[4]->text(), QStringLiteral("Version: 1.00 [EXE: 1.05]"));
    }

    void startsWithItsCaptionsAndTheEggHidden()
    {
        Fixture f;
        frmAbout w(f.fp.platform(), f.settings, f.shell);
        QCOMPARE(w.objectName(), QStringLiteral("frmAbout"));
        QCOMPARE(w.windowTitle(), QStringLiteral("About"));
        QCOMPARE(w.lblAboutBox[3]->text(),
                 QStringLiteral("Special thanks to my good friend and father for the great idea to develop this program!"));
        QCOMPARE(w.lblEgg->text(), QStringLiteral("egg finder? so... then find it!"));

        for (int i = 0; i < 5; ++i) {
            QCOMPARE(w.findChild<QLabel *>(QStringLiteral("lblAboutBox_%1").arg(i)), w.lblAboutBox[size_t(i)]);
            QVERIFY(!w.lblAboutBox[size_t(i)]->text().isEmpty());
        }
        for (QLabel *label : {w.lblAboutBox[0], w.lblAboutBox[1], w.lblAboutBox[2], w.lblAboutBox[3],
                              w.lblAboutBox[4], w.lblEgg})
            QCOMPARE(label->font().family(), QStringLiteral("Arial"));

        const QList<QPair<QString, bool>> pictures{{"picHoldAbout", true},        {"picCanadaFlag", true},
                                                   {"picPellowick", true},        {"picOlderPellowick1", false},
                                                   {"picOlderPellowick2", false}};
        for (const auto &[name, visible] : pictures) {
            auto *pic = w.findChild<QLabel *>(name);
            QVERIFY2(pic, qPrintable(name));
            QVERIFY2(!pic->pixmap().isNull(), qPrintable(name));
            QCOMPARE(shown(pic), visible);
        }
        QVERIFY(shown(w.lblEgg));
    }

    void doubleClickingALabelTogglesTheOlderPictures()
    {
        Fixture f;
        frmAbout w(f.fp.platform(), f.settings, f.shell);
        w.show();
        QVERIFY(QTest::qWaitForWindowExposed(&w));

        // The flag hides the egg first, so the click must bring it back.
        w.picCanadaFlag_MouseMove();
        QVERIFY(!shown(w.lblEgg));

        doubleClick(w.lblAboutBox[1], Qt::LeftButton);
        QCOMPARE(w.lblEgg->text(), QStringLiteral("2011 pixs other is 1996 me!"));
        QVERIFY(shown(w.lblEgg));
        QVERIFY(shown(w.picOlderPellowick1));
        QVERIFY(shown(w.picOlderPellowick2));

        doubleClick(w.lblAboutBox[4], Qt::LeftButton);
        QCOMPARE(w.lblEgg->text(), QStringLiteral("2011 pixs other is 1996 me!"));
        QVERIFY(shown(w.lblEgg));
        QVERIFY(!shown(w.picOlderPellowick1));
        QVERIFY(!shown(w.picOlderPellowick2));

        // Only a left double-click counts, and only on the five labels.
        doubleClick(w.lblAboutBox[0], Qt::RightButton);
        doubleClick(w.picPellowick, Qt::LeftButton);
        QVERIFY(!shown(w.picOlderPellowick1));
    }

    void eachMoveOverTheFlagFlipsTheEgg_data()
    {
        QTest::addColumn<int>("moves");
        QTest::addColumn<bool>("eggShown");
        QTest::newRow("one") << 1 << false;
        QTest::newRow("two") << 2 << true;
        QTest::newRow("five") << 5 << false;
        QTest::newRow("eight") << 8 << true;
    }
    void eachMoveOverTheFlagFlipsTheEgg()
    {
        QFETCH(int, moves);
        QFETCH(bool, eggShown);
        Fixture f;
        frmAbout w(f.fp.platform(), f.settings, f.shell);
        w.show();
        QVERIFY(QTest::qWaitForWindowExposed(&w));
        // Start from a known place off the flag.
        QTest::mouseMove(w.picHoldAbout, QPoint(10, 10));
        QVERIFY(shown(w.lblEgg));

        // Distinct points: a move to where the pointer already is is no move.
        for (int i = 0; i < moves; ++i)
            QTest::mouseMove(w.picCanadaFlag, QPoint(4 + 3 * i, 10 + i % 2));
        QCOMPARE(shown(w.lblEgg), eggShown);
        QVERIFY(!shown(w.picOlderPellowick1));
    }

    void movesElsewhereLeaveTheEggAlone()
    {
        Fixture f;
        frmAbout w(f.fp.platform(), f.settings, f.shell);
        w.show();
        QVERIFY(QTest::qWaitForWindowExposed(&w));
        QTest::mouseMove(w.picPellowick, QPoint(5, 5));
        QTest::mouseMove(w.lblAboutBox[2], QPoint(6, 6));
        QTest::mouseMove(w.lblEgg, QPoint(7, 7));
        QVERIFY(shown(w.lblEgg));
    }

    void closingRunsTheCloseSequence()
    {
        Fixture f;
        frmAbout w(f.fp.platform(), f.settings, f.shell);
        w.show();
        QVERIFY(QTest::qWaitForWindowExposed(&w));
        QVERIFY(w.close());
        QCOMPARE(f.shell.calls, (QStringList{"subResetMainWindowSize", "maximizeTableWindow", "subUnloadSecondaryForms"}));
    }
};

QTEST_MAIN(AboutTest)
#include "tst_about.moc"
