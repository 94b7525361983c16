#include "data/Database.h"
#include "data/ProgramSettings.h"
#include "fakes/FakePlatform.h"
#include "fakes/TestDatabase.h"
#include "info/frmAbout.h"
#include "shell/ShellLink.h"

#include <QLabel>
#include <QTest>

class RecordingShell : public ShellLink {
public:
    QStringList calls;
    void setMenuPair(MenuPair, bool) override {}
    bool questionsLimited() const override { return false; }
    void subMinimizeToTray(bool, const QString &) override {}
    void subRemoveTrayIcon() override {}
    void restoreMainWindow() override {}
    void subResetMainWindowSize() override { calls << "reset size"; }
    void subUnloadSecondaryForms() override { calls << "unload"; }
    void maximizeTableWindow() override { calls << "maximize"; }
    void subApplyMDIProgramSettings() override {}
    QWidget *mainPictureTarget() override { return nullptr; }
};

class AboutTest : public QObject {
    Q_OBJECT

private slots:
    void versionEggAndCloseSequence()
    {
        FakePlatform fp;
        fp.version.maj = 2, fp.version.min = 1, fp.version.rev = 12;
        QVERIFY(TestDatabase(fp.testDir.dbPath()).exec("UPDATE tblprogramsetting SET strVersion = '3.7b'"));
        Database db{fp.appDir, fp.messages, fp.end};
        ProgramSettings settings{db};
        RecordingShell shell;
        frmAbout w(fp.platform(), settings, shell);
        QCOMPARE(w.lblAboutBox[4]->text(), "Version: 3.7b [EXE: 2.112]");
        w.show();
        QVERIFY(QTest::qWaitForWindowExposed(&w));

        // Every move over the flag flips the egg.
        for (int i = 0; i < 3; ++i) {
            QTest::mouseMove(w.picCanadaFlag, QPoint(4 + 3 * i, 10));
            QCOMPARE(w.lblEgg->isVisible(), i == 1);
        }
        // A left double-click on a label brings the egg back and toggles the old pictures.
        for (const bool older : {true, false}) {
            QTest::mouseDClick(w.lblAboutBox[older ? 1 : 4], Qt::LeftButton);
            QCOMPARE(w.lblEgg->text(), "2011 pixs other is 1996 me!");
            QVERIFY(w.lblEgg->isVisible());
            QCOMPARE(w.picOlderPellowick1->isVisible(), older);
        }

        QVERIFY(w.close());
        QCOMPARE(shell.calls, (QStringList{"reset size", "maximize", "unload"}));
    }
};

QTEST_MAIN(AboutTest)
#include "tst_about.moc"
