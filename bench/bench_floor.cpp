// The reference the program is measured against: a bare Qt window of the
// program's shape, with its widgets and none of its logic (no sound, no
// database, no picture): a menu bar, an MDI area holding the table of 13 rows
// of boxes, labels and buttons, a clock label set once a second, the bottom
// panel and a tray icon. What it costs on a machine is the floor for a window
// like the program's there.

#include <QApplication>
#include <QCheckBox>
#include <QDateTime>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QPainter>
#include <QPushButton>
#include <QStyle>
#include <QSystemTrayIcon>
#include <QTimer>
#include <QToolButton>

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    QMainWindow window;
    window.setWindowTitle(QStringLiteral("Qt same-shape floor"));
    for (const char *title : {"Program", "Utilities", "Help"}) {
        QMenu *menu = window.menuBar()->addMenu(QString::fromLatin1(title));
        for (int i = 0; i < 6; ++i)
            menu->addAction(QStringLiteral("Command %1").arg(i))->setCheckable(i % 2);
    }
    auto *area = new QMdiArea(&window);
    window.setCentralWidget(area);

    auto *table = new QWidget;
    auto *grid = new QGridLayout(table);
    auto *clock = new QLabel(table);
    QFont bold = clock->font();
    bold.setBold(true);
    bold.setPointSizeF(bold.pointSizeF() * 1.45);
    clock->setFont(bold);
    grid->addWidget(clock, 0, 0, 1, 6);
    const char *heads[] = {"row #", "DATE", "TIME", "EVENT DESCRIPTION", "", "SET"};
    for (int c = 0; c < 6; ++c)
        grid->addWidget(new QLabel(QString::fromLatin1(heads[c]), table), 1, c);
    const QStyle::StandardPixmap icons[] = {QStyle::SP_MediaVolume, QStyle::SP_FileDialogDetailedView,
                                            QStyle::SP_ArrowRight, QStyle::SP_DialogDiscardButton};
    for (int r = 0; r < 13; ++r) {
        const int row = r + 2;
        grid->addWidget(new QLabel(QString::number(r + 1), table), row, 0);
        for (int c = 1; c <= 4; ++c)
            grid->addWidget(new QLineEdit(table), row, c);
        grid->addWidget(new QLabel(QStringLiteral("0d 0h 0m 0s"), table), row, 5);
        for (int b = 0; b < 4; ++b) {
            auto *tool = new QToolButton(table);
            tool->setIcon(table->style()->standardIcon(icons[b]));
            tool->setAutoRaise(true);
            grid->addWidget(tool, row, 6 + b);
        }
        grid->addWidget(new QLabel(QStringLiteral("?"), table), row, 10);
        grid->addWidget(new QPushButton(QStringLiteral("SET"), table), row, 11);
    }
    int column = 0;
    for (const char *check : {"Time Row", "Sound", "On Alarm Popup the Form", "Minimize to Tray"})
        grid->addWidget(new QCheckBox(QString::fromLatin1(check), table), 16, column++ * 2, 1, 2);
    grid->addWidget(new QLineEdit(QStringLiteral("3"), table), 17, 0);
    for (const char *button : {"Save", "Load", "Clear Form"})
        grid->addWidget(new QPushButton(QString::fromLatin1(button), table), 17, column++);
    area->addSubWindow(table)->showMaximized();

    QPixmap icon(22, 22);
    icon.fill(Qt::red);
    QSystemTrayIcon tray{QIcon(icon)};
    tray.show();

    QTimer timer;
    timer.setTimerType(Qt::PreciseTimer);
    QObject::connect(&timer, &QTimer::timeout, clock, [clock] {
        clock->setText(QDateTime::currentDateTime().toString(QStringLiteral("MMM dd, yyyy HH:mm:ss")));
    });
    timer.start(1000);
    window.setFixedSize(804, 616);
    window.show();
    return app.exec();
}
