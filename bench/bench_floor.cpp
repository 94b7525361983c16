// A reference for the idle figures: a bare Qt window of the same size with a
// bold label that shows the time once a second, and nothing else. What it
// costs on a machine is the floor for any Qt clock window there.

#include <QApplication>
#include <QDateTime>
#include <QLabel>
#include <QTimer>
#include <QVBoxLayout>
#include <QWidget>

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    QWidget window;
    window.setWindowTitle(QStringLiteral("Qt clock floor"));
    window.resize(810, 620);
    auto *layout = new QVBoxLayout(&window);
    auto *label = new QLabel(&window);
    QFont bold = label->font();
    bold.setBold(true);
    bold.setPointSizeF(bold.pointSizeF() * 1.45);
    label->setFont(bold);
    label->setFixedSize(260, 30);
    layout->addWidget(label);
    layout->addStretch(1);
    QTimer timer;
    timer.setTimerType(Qt::PreciseTimer);
    QObject::connect(&timer, &QTimer::timeout, label, [label] {
        label->setText(QDateTime::currentDateTime().toString(QStringLiteral("MMM dd, yyyy HH:mm:ss")));
    });
    timer.start(1000);
    window.show();
    return app.exec();
}
