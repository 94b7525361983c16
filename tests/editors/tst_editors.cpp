// The two row editors, opened from the row buttons of a loaded window.

#include "editors/frmEditURL.h"
#include "editors/frmEditWAVEFileNamePath.h"
#include "fakes/LoadedMainWindow.h"

#include <QLabel>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QTest>
#include <QToolButton>

namespace {

frmEditURL *urlEditor(LoadedMainWindow &m)
{
    return qobject_cast<frmEditURL *>(m.w->showForm(SecondaryForm::EditURL));
}

frmEditWAVEFileNamePath *soundEditor(LoadedMainWindow &m)
{
    return qobject_cast<frmEditWAVEFileNamePath *>(m.w->showForm(SecondaryForm::EditWAVEFileNamePath));
}

void settle() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

} // namespace

class EditorsTest : public QObject {
    Q_OBJECT

private slots:
    void theUrlEditorRoundTripsRowsOneAndThirteen_data()
    {
        QTest::addColumn<int>("row");
        QTest::newRow("first") << 0;
        QTest::newRow("last") << 12;
    }
    void theUrlEditorRoundTripsRowsOneAndThirteen()
    {
        QFETCH(int, row);
        LoadedMainWindow m;
        m.t->txtURL[row]->setText(QStringLiteral("https://old.example"));
        QTest::mouseClick(m.t->cmdEditURL[row], Qt::LeftButton);
        frmEditURL *e = urlEditor(m);
        QVERIFY(e && e->isVisible());
        QCOMPARE(e->windowTitle(), QStringLiteral("Editing URL Row:"));
        QCOMPARE(e->lblintIndex->text(), QString::number(row + 1));
        QCOMPARE(e->txtEditURL->text(), QStringLiteral("https://old.example"));

        m.t->bDataChanged = false;
        e->txtEditURL->setText(QStringLiteral("  https://new.example/a?b='c'  "));
        e->cmdApply_Click();
        settle();
        QCOMPARE(m.t->txtURL[row]->text(), QStringLiteral("https://new.example/a?b='c'"));
        QCOMPARE(m.t->lblUrlToolTip[row]->text(), QStringLiteral("!"));
        QCOMPARE(m.t->lblUrlToolTip[row]->toolTip(), QStringLiteral("https://new.example/a?b='c'"));
        QVERIFY(m.t->bDataChanged);
        QVERIFY(!m.w->showForm(SecondaryForm::EditURL) || urlEditor(m)->lblintIndex->text().isEmpty());
    }

    void blanksOnlyClearTheAddressAndSaveTurnsTheMarkToAStar()
    {
        LoadedMainWindow m;
        m.t->cmdEditURL_Click(3);
        frmEditURL *e = urlEditor(m);
        e->txtEditURL->setText(QStringLiteral("https://kept.example"));
        e->cmdApply_Click();
        settle();
        m.t->cmdSave_Click();
        QCOMPARE(m.t->lblUrlToolTip[3]->text(), QStringLiteral("*"));

        m.t->cmdEditURL_Click(3);
        e = urlEditor(m);
        e->txtEditURL->setText(QStringLiteral("   "));
        e->cmdApply_Click();
        settle();
        QCOMPARE(m.t->txtURL[3]->text(), QString());
        QCOMPARE(m.t->lblUrlToolTip[3]->text(), QStringLiteral("?"));
        QCOMPARE(m.t->lblUrlToolTip[3]->toolTip(), QStringLiteral("Reveals the URL description."));
    }

    void enterInTheBoxAppliesAndCloses()
    {
        LoadedMainWindow m;
        m.t->cmdEditURL_Click(1);
        frmEditURL *e = urlEditor(m);
        QPointer<frmEditURL> alive(e);
        e->txtEditURL->setText(QStringLiteral("x; touch /tmp/owned"));
        QTest::keyClick(e->txtEditURL, Qt::Key_Return);
        settle();
        QVERIFY(!alive);
        QCOMPARE(m.t->txtURL[1]->text(), QStringLiteral("x; touch /tmp/owned"));
    }

    void clearEmptiesOnlyTheBox()
    {
        LoadedMainWindow m;
        m.t->txtURL[2]->setText(QStringLiteral("https://stays.example"));
        m.t->cmdEditURL_Click(2);
        urlEditor(m)->cmdClearForm_Click();
        QCOMPARE(urlEditor(m)->txtEditURL->text(), QString());
        QCOMPARE(m.t->txtURL[2]->text(), QStringLiteral("https://stays.example"));
    }

    void theOpenButtonUsesTheBrowserOrLeadsToTheEditor()
    {
        LoadedMainWindow m;
        m.t->txtURL[4]->setText(QStringLiteral(" https://example.org/x "));
        m.t->cmdOpenURL_Click(4);
        m.t->cmdOpenURL_Click(4);
        QCOMPARE(m.fp.browser.opened, (QStringList{"https://example.org/x", "https://example.org/x"}));
        QVERIFY(!m.w->form(SecondaryForm::EditURL));

        m.t->cmdOpenURL_Click(5);
        QCOMPARE(m.fp.browser.opened.size(), 2);
        QVERIFY(urlEditor(m)->isVisible());
        QCOMPARE(urlEditor(m)->lblintIndex->text(), QStringLiteral("6"));

        m.fp.browser.result = false;
        m.t->cmdOpenURL_Click(4);
        QCOMPARE(m.fp.messages.shown.size(), 1);
        QCOMPARE(m.fp.messages.shown[0].title, QStringLiteral("ERROR"));
        QVERIFY(m.fp.messages.shown[0].text.startsWith(QStringLiteral("cmdOpenURL_Click\r\n")));
    }

    void theSoundEditorAppliesTrimmedPathsWithoutChecking()
    {
        LoadedMainWindow m;
        m.t->txtWAVEFileNamePath[12]->setText(QStringLiteral("/old.wav"));
        QTest::mouseClick(m.t->cmdSoundRow[12], Qt::LeftButton);
        frmEditWAVEFileNamePath *e = soundEditor(m);
        QCOMPARE(e->windowTitle(), QStringLiteral("WAV File Name Pathing:"));
        QCOMPARE(e->lblintIndex->text(), QStringLiteral("13"));
        QCOMPARE(e->txtEditWAVEFileNamePath->text(), QStringLiteral("/old.wav"));
        e->txtEditWAVEFileNamePath->setText(QStringLiteral("  /no/such/file.wav "));
        QTest::keyClick(e->txtEditWAVEFileNamePath, Qt::Key_Return);
        settle();
        QCOMPARE(m.t->txtWAVEFileNamePath[12]->text(), QStringLiteral("/no/such/file.wav"));
        QVERIFY(m.t->bDataChanged);
        QVERIFY(m.fp.messages.shown.isEmpty());
    }

    void theDefaultPathFillsOnlyTheBox()
    {
        LoadedMainWindow m;
        m.t->cmdSoundRow_Click(0);
        soundEditor(m)->cmdDefaultPath_Click();
        QCOMPARE(soundEditor(m)->txtEditWAVEFileNamePath->text(), m.fp.testDir.path() + QStringLiteral("/alarm.wav"));
        QCOMPARE(m.t->txtWAVEFileNamePath[0]->text(), QString());
    }

    void theSoundTestExplainsWhatIsMissing_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("text");
        QTest::newRow("empty") << "" << "NO PATH ENTERED"
                               << "Please enter your custom path or use the 'D'efault button to let the program set you a path.";
        QTest::newRow("blanks") << "   " << "NO PATH ENTERED"
                                << "Please enter your custom path or use the 'D'efault button to let the program set you a path.";
        QTest::newRow("missing") << "/no/such.wav" << "PATH NOT FOUND" << "Missing the file:\r\n/no/such.wav";
    }
    void theSoundTestExplainsWhatIsMissing()
    {
        QFETCH(QString, path);
        QFETCH(QString, title);
        QFETCH(QString, text);
        LoadedMainWindow m;
        m.t->cmdSoundRow_Click(0);
        soundEditor(m)->txtEditWAVEFileNamePath->setText(path);
        soundEditor(m)->cmdSoundTest_Click();
        QCOMPARE(m.fp.messages.shown.size(), 1);
        QCOMPARE(m.fp.messages.shown[0].title, title);
        QCOMPARE(m.fp.messages.shown[0].text, text);
        QCOMPARE(m.fp.messages.shown[0].buttons, MsgButtons::OkCancel);
        QVERIFY(m.fp.sound.played.isEmpty());
    }

    void theSoundTestPlaysAnExistingFile()
    {
        LoadedMainWindow m;
        m.t->cmdSoundRow_Click(0);
        const QString wav = m.fp.testDir.path() + QStringLiteral("/alarm.wav");
        soundEditor(m)->txtEditWAVEFileNamePath->setText(QStringLiteral(" ") + wav);
        soundEditor(m)->cmdSoundTest_Click();
        QCOMPARE(m.fp.sound.played, QStringList{wav});
        QVERIFY(m.fp.messages.shown.isEmpty());
    }

    void closingAnEditorRunsTheCloseSequence()
    {
        LoadedMainWindow m;
        m.t->cmdSoundRow_Click(0);
        m.w->resize(900, 700);
        soundEditor(m)->close();
        QCOMPARE(m.w->size(), QSize(804, 616));
        QVERIFY(m.w->tableSubWindow()->isMaximized());
    }
};

QTEST_MAIN(EditorsTest)
#include "tst_editors.moc"
