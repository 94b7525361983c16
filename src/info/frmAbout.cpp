#include "info/frmAbout.h"

#include "data/ProgramSettings.h"
#include "info/AboutArtwork.h"
#include "links/SecondaryHost.h"
#include "platform/VersionInfo.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QMouseEvent>
#include <QPixmap>
#include <QVBoxLayout>

namespace {

const QString eggFound = QStringLiteral("2011 pixs other is 1996 me!");

// A picture box: a label holding a painted image at a fixed size. Hiding it
// keeps its place, so the row does not jump while the egg plays.
QLabel *pictureBox(QWidget *parent, const QString &name, const QString &accessible, const QImage &image)
{
    auto *box = new QLabel(parent);
    box->setObjectName(name);
    box->setAccessibleName(accessible);
    box->setPixmap(QPixmap::fromImage(image));
    box->setFixedSize(image.deviceIndependentSize().toSize());
    QSizePolicy keep = box->sizePolicy();
    keep.setRetainSizeWhenHidden(true);
    box->setSizePolicy(keep);
    return box;
}

} // namespace

frmAbout::frmAbout(const Platform &platform, ProgramSettings &settings, SecondaryHost &host, QWidget *parent)
    : QWidget(parent, Qt::Window), m_platform(platform), m_settings(settings), m_host(host)
{
    setObjectName(QStringLiteral("frmAbout"));
    setWindowTitle(QStringLiteral("About"));
    setFont(QFont(QStringLiteral("Arial"), 9));
    buildControls();
    Form_Load();
}

void frmAbout::buildControls()
{
    const qreal dpr = devicePixelRatioF();

    picHoldAbout = pictureBox(this, QStringLiteral("picHoldAbout"), QStringLiteral("Alarm clock at night"),
                              drawAboutScene(QSize(160, 320), dpr));
    picPellowick = pictureBox(this, QStringLiteral("picPellowick"), QStringLiteral("The maker"),
                              drawPortrait(Portrait::Recent, QSize(84, 104), dpr));
    picOlderPellowick1 = pictureBox(this, QStringLiteral("picOlderPellowick1"), QStringLiteral("The maker, long ago"),
                                    drawPortrait(Portrait::OlderFirst, QSize(74, 94), dpr));
    picOlderPellowick2 = pictureBox(this, QStringLiteral("picOlderPellowick2"),
                                    QStringLiteral("The maker, long ago, again"),
                                    drawPortrait(Portrait::OlderSecond, QSize(74, 94), dpr));
    picCanadaFlag = pictureBox(this, QStringLiteral("picCanadaFlag"), QStringLiteral("Flag of Canada"),
                               drawCanadaFlag(QSize(72, 36), dpr));
    picOlderPellowick1->hide();
    picOlderPellowick2->hide();
    // The egg flickers on every move over the flag, buttons pressed or not.
    picCanadaFlag->setMouseTracking(true);
    picCanadaFlag->installEventFilter(this);

    const QString captions[5] = {
        QStringLiteral("Videos: none published yet"),
        QStringLiteral("Web: see the README that came with this program"),
        QStringLiteral("E-mail: use the project's issue tracker"),
        QString(),
        QStringLiteral("Version: Major.Minor.Revision in Project Settings"),
    };
    for (int i = 0; i < 5; ++i) {
        auto *label = new QLabel(captions[i], this);
        label->setObjectName(QStringLiteral("lblAboutBox_%1").arg(i));
        label->setWordWrap(true);
        label->installEventFilter(this);
        lblAboutBox[size_t(i)] = label;
    }
    QFont versionFont = font();
    versionFont.setPointSize(12);
    versionFont.setBold(true);
    lblAboutBox[4]->setFont(versionFont);
    QFont thanksFont = font();
    thanksFont.setPointSize(10);
    lblAboutBox[3]->setFont(thanksFont);

    lblEgg = new QLabel(QStringLiteral("egg finder? so... then find it!"), this);
    lblEgg->setObjectName(QStringLiteral("lblEgg"));
    QFont eggFont = font();
    eggFont.setItalic(true);
    lblEgg->setFont(eggFont);
    lblEgg->setForegroundRole(QPalette::PlaceholderText);
    QSizePolicy keep = lblEgg->sizePolicy();
    keep.setRetainSizeWhenHidden(true);
    lblEgg->setSizePolicy(keep);

    auto *contacts = new QVBoxLayout;
    contacts->setSpacing(4);
    for (int i = 0; i < 3; ++i)
        contacts->addWidget(lblAboutBox[size_t(i)]);

    auto *pictures = new QHBoxLayout;
    pictures->setSpacing(10);
    pictures->addWidget(picPellowick, 0, Qt::AlignBottom);
    pictures->addWidget(picOlderPellowick1, 0, Qt::AlignBottom);
    pictures->addWidget(picOlderPellowick2, 0, Qt::AlignBottom);
    pictures->addStretch(1);

    auto *texts = new QVBoxLayout;
    texts->setSpacing(0);
    texts->addWidget(lblAboutBox[4]);
    texts->addSpacing(12);
    texts->addWidget(lblAboutBox[3]);
    texts->addSpacing(16);
    texts->addLayout(contacts);
    texts->addStretch(1);
    texts->addLayout(pictures);
    texts->addSpacing(8);
    // The egg sits beside the flag that plays with it.
    auto *egg = new QHBoxLayout;
    egg->addWidget(lblEgg, 1, Qt::AlignVCenter);
    egg->addWidget(picCanadaFlag, 0, Qt::AlignBottom);
    texts->addLayout(egg);

    auto *root = new QHBoxLayout(this);
    root->setContentsMargins(20, 20, 20, 20);
    root->setSpacing(20);
    root->addWidget(picHoldAbout, 0, Qt::AlignTop);
    root->addLayout(texts, 1);

    setFixedSize(520, 360);
}

void frmAbout::Form_Load()
{
    const VersionInfo &exe = m_platform.version;
    // Minor and revision run together on purpose: 1.0.5 reads "1.05".
    lblAboutBox[4]->setText(QStringLiteral("Version: ") + m_settings.subReturnAlarmclockVersion() +
                            QStringLiteral(" [EXE: ") + QString::number(exe.major()) + u'.' +
                            QString::number(exe.minor()) + QString::number(exe.revision()) + u']');
    lblAboutBox[3]->setText(
        QStringLiteral("Special thanks to my good friend and father for the great idea to develop this program!"));
}

void frmAbout::lblAboutBox_DblClick(int /*index*/)
{
    lblEgg->setText(eggFound);
    lblEgg->setVisible(true);
    picOlderPellowick1->setVisible(picOlderPellowick1->isHidden());
    picOlderPellowick2->setVisible(picOlderPellowick2->isHidden());
}

void frmAbout::picCanadaFlag_MouseMove()
{
    lblEgg->setVisible(lblEgg->isHidden());
}

bool frmAbout::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == picCanadaFlag && event->type() == QEvent::MouseMove) {
        picCanadaFlag_MouseMove();
    } else if (event->type() == QEvent::MouseButtonDblClick &&
               static_cast<QMouseEvent *>(event)->button() == Qt::LeftButton) {
        for (int i = 0; i < 5; ++i)
            if (watched == lblAboutBox[size_t(i)])
                lblAboutBox_DblClick(i);
    }
    return QWidget::eventFilter(watched, event);
}

void frmAbout::closeEvent(QCloseEvent *event)
{
    m_host.closeSequence();
    QWidget::closeEvent(event);
}
