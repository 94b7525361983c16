// The two row editors, opened from the row buttons of a loaded window.

#include "editors/frmEditURL.h"
#include "editors/frmEditWAVEFileNamePath.h"
#include "fakes/LoadedMainWindow.h"

#include <QLabel>
#include <QMdiSubWindow>
#include <QTest>
#include <QToolButton>

namespace {

frmEditURL *urlEditor(LoadedMainWindow &m) { return qobject_cast<frmEditURL *>(m.w->form(SecondaryForm::EditURL)); }
void settle() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }
// A row's address and its marker's caption, tooltip and accessible description.
QStringList url(LoadedMainWindow &m, int row)
{
    return {m.t->txtURL[row]->text(), m.t->lblUrlToolTip[row]->text(), m.t->lblUrlToolTip[row]->toolTip(), m.t->lblUrlToolTip[row]->accessibleDescription()};
}

} // namespace

class EditorsTest : public QObject {
    Q_OBJECT

private slots:
    void eachEditorAppliesToItsRow()
    {
        LoadedMainWindow m;
        m.t->txtWAVEFileNamePath[12]->setText(QStringLiteral("/old.wav"));
        QTest::mouseClick(m.t->cmdSoundRow[12], Qt::LeftButton);
        auto *e = qobject_cast<frmEditWAVEFileNamePath *>(m.w->form(SecondaryForm::EditWAVEFileNamePath));
        QCOMPARE(e->windowTitle() + "|" + e->lblintIndex->text() + "|" + e->txtEditWAVEFileNamePath->text(), "WAV File Name Pathing:|13|/old.wav");
        const QString wav = m.fp.testDir.filePath(QStringLiteral("alarm.wav"));
        e->cmdDefaultPath_Click();
        QCOMPARE(e->txtEditWAVEFileNamePath->text() + "|" + m.t->txtWAVEFileNamePath[12]->text(), wav + "|/old.wav");
        e->cmdSoundTest_Click();
        QCOMPARE(m.fp.sound.played, QStringList{wav});
        const QString empty = QStringLiteral("NO PATH ENTERED|Please enter your custom path or use the 'D'efault button to let the program set you a path.");
        for (const QString &path : {QString(), QStringLiteral("   "), QStringLiteral("/no/such.wav")}) {
            e->txtEditWAVEFileNamePath->setText(path);
            e->cmdSoundTest_Click();
            const ShownMessage shown = m.fp.messages.shown.takeLast();
            QCOMPARE(shown.title + "|" + shown.text, path.trimmed().isEmpty() ? empty : QStringLiteral("PATH NOT FOUND|Missing the file:\r\n/no/such.wav"));
            QCOMPARE(shown.buttons, MsgButtons::OkCancel);
        }
        QCOMPARE(m.fp.sound.played, QStringList({wav, "/no/such.wav"})); // the player, not the window, looks for it
        // A missing file is applied without complaint; closing runs the close sequence.
        e->txtEditWAVEFileNamePath->setText(QStringLiteral("  /no/such/file.wav "));
        m.w->resize(900, 700);
        m.t->bDataChanged = false;
        QTest::keyClick(e->txtEditWAVEFileNamePath, Qt::Key_Return);
        settle();
        QCOMPARE(m.t->txtWAVEFileNamePath[12]->text(), QStringLiteral("/no/such/file.wav"));
        QVERIFY(m.t->bDataChanged && m.fp.messages.shown.isEmpty() && m.w->size() == QSize(804, 616) && m.w->tableSubWindow()->isMaximized());
        // The address editor: its row, the marker and the open button.
        const QString typed = QStringLiteral("x; touch /tmp/owned");
        m.t->txtURL[12]->setText(QStringLiteral("https://old.example"));
        QTest::mouseClick(m.t->cmdEditURL[12], Qt::LeftButton);
        frmEditURL *u = urlEditor(m);
        QCOMPARE(QStringList({u->windowTitle(), u->lblintIndex->text(), u->txtEditURL->text()}),
                 QStringList({"Editing URL Row:", "13", "https://old.example"}));
        // Enter applies and closes; the address is kept as typed, trimmed.
        m.t->bDataChanged = false;
        u->txtEditURL->setText("  " + typed + "  ");
        QTest::keyClick(u->txtEditURL, Qt::Key_Return);
        settle();
        QVERIFY(!urlEditor(m) && m.t->bDataChanged);
        QCOMPARE(url(m, 12), QStringList({typed, "!", typed, typed}));
        // Clear empties only the box; blanks only clear the address.
        m.t->cmdEditURL_Click(12);
        urlEditor(m)->cmdClearForm_Click();
        QCOMPARE(m.t->txtURL[12]->text(), typed);
        urlEditor(m)->txtEditURL->setText(QStringLiteral("   "));
        urlEditor(m)->cmdApply_Click();
        QCOMPARE(url(m, 12), QStringList({"", "?", "Reveals the URL description.", "Reveals the URL description."}));
        settle();
        // The open button uses the browser, or leads to the editor when there is no address.
        m.t->txtURL[4]->setText(QStringLiteral(" https://example.org/x "));
        m.t->cmdOpenURL_Click(4);
        QVERIFY(m.fp.browser.opened == QStringList({"https://example.org/x"}) && !urlEditor(m));
        m.t->cmdOpenURL_Click(5);
        QVERIFY(m.fp.browser.opened.size() == 1 && urlEditor(m)->lblintIndex->text() == "6");
        m.fp.browser.result = false;
        m.t->cmdOpenURL_Click(4);
        QVERIFY(m.fp.messages.shown.size() == 1 && m.fp.messages.shown[0].text.startsWith(QStringLiteral("cmdOpenURL_Click\r\n")));
    }
};

QTEST_MAIN(EditorsTest)
#include "tst_editors.moc"
