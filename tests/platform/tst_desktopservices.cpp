#include "platform/qt/DBusNotifier.h"
#include "platform/qt/DesktopUrlOpener.h"
#include "platform/qt/QtTrayIcon.h"
#include "platform/qt/XdgAutostart.h"

#include <QDesktopServices>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>

// Stands in for the browser: records what the opener hands to the desktop.
class Browser : public QObject {
    Q_OBJECT
public:
    QList<QUrl> opened;
public slots:
    void open(const QUrl &url) { opened.append(url); }
};

class DesktopServicesTest : public QObject {
    Q_OBJECT

    Browser browser;
    QTemporaryDir config;

private slots:
    void initTestCase()
    {
        qputenv("XDG_CONFIG_HOME", QFile::encodeName(config.path()));
        qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent/bus");
        for (const char *scheme : {"http", "https", "file", "mailto"})
            QDesktopServices::setUrlHandler(QLatin1String(scheme), &browser, "open");
    }

    void cleanupTestCase()
    {
        for (const char *scheme : {"http", "https", "file", "mailto"})
            QDesktopServices::unsetUrlHandler(QLatin1String(scheme));
    }

    void addresses_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("opened");
        QTest::newRow("no scheme") << "www.example.org" << "http://www.example.org";
        QTest::newRow("no scheme, path") << "example.org/a b?q=1" << "http://example.org/a%20b?q=1";
        QTest::newRow("web") << "https://example.org/x" << "https://example.org/x";
        QTest::newRow("mail") << "mailto:me@example.org" << "mailto:me@example.org";
        QTest::newRow("file path") << "/tmp/page.html" << "file:///tmp/page.html";
    }

    void addresses()
    {
        QFETCH(QString, typed);
        QFETCH(QString, opened);
        browser.opened.clear();
        QVERIFY(DesktopUrlOpener().open(typed));
        QCOMPARE(browser.opened.size(), 1);
        QCOMPARE(browser.opened[0].toString(QUrl::FullyEncoded), opened);
    }

    void nothingTypedOpensNothing()
    {
        browser.opened.clear();
        QVERIFY(!DesktopUrlOpener().open(QString()));
        QVERIFY(browser.opened.isEmpty());
    }

    void trayReasons_data()
    {
        QTest::addColumn<int>("reason");
        QTest::addColumn<bool>("statusNotifierHost");
        QTest::addColumn<int>("message"); // 0: none
        const int none = 0;
        const int restore = TrayIcon::LeftDoubleClick;
        const int menu = TrayIcon::RightButtonDown;
        QTest::newRow("SNI activate") << int(QSystemTrayIcon::Trigger) << true << restore;
        QTest::newRow("SNI context menu") << int(QSystemTrayIcon::Context) << true << menu;
        QTest::newRow("SNI secondary") << int(QSystemTrayIcon::MiddleClick) << true << none;
        // An XEmbed tray sends Trigger on every left press, before a double click.
        QTest::newRow("XEmbed press") << int(QSystemTrayIcon::Trigger) << false << none;
        QTest::newRow("XEmbed double click") << int(QSystemTrayIcon::DoubleClick) << false << restore;
        QTest::newRow("XEmbed right press") << int(QSystemTrayIcon::Context) << false << menu;
    }

    void trayReasons()
    {
        QFETCH(int, reason);
        QFETCH(bool, statusNotifierHost);
        QFETCH(int, message);
        const auto got = QtTrayIcon::messageFor(QSystemTrayIcon::ActivationReason(reason), statusNotifierHost);
        QCOMPARE(got.value_or(0), message);
    }

    void autostartEntry()
    {
        XdgAutostart autostart(QStringLiteral("/opt/my apps/50%$off/alarmclock"));
        const QString entry = config.filePath(QStringLiteral("autostart/quorvel-alarmclock.desktop"));
        QCOMPARE(autostart.entryPath(), entry);
        QVERIFY(!autostart.enabled());
        QVERIFY(autostart.setEnabled(true));
        QVERIFY(autostart.enabled());
        QFile file(entry);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QVERIFY(file.readAll().contains(R"(Exec="/opt/my apps/50%%\\$off/alarmclock")"));
        const QString validate = QStandardPaths::findExecutable(QStringLiteral("desktop-file-validate"));
        if (!validate.isEmpty())
            QCOMPARE(QProcess::execute(validate, {entry}), 0);
        QVERIFY(autostart.setEnabled(false));
        QVERIFY(!QFile::exists(entry));
        QVERIFY(autostart.setEnabled(false));
    }

    // No session bus: nothing shows, nothing waits, nothing fails.
    void notificationsWithoutABus()
    {
        DBusNotifier notifier;
        QElapsedTimer timer;
        timer.start();
        notifier.show(QStringLiteral("ALARM @ Sep, 30 at 07:30"), QStringLiteral("Wake up"));
        notifier.close();
        QVERIFY(timer.elapsed() < 500);
    }
};

QTEST_MAIN(DesktopServicesTest)
#include "tst_desktopservices.moc"
