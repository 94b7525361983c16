// The table window in its colour scheme: text and back colours of every
// control, the scheme's background picture, and a row's resting colour.

#include "table/frmAlarmClock.h"

#include "appearance/CustomColoursLoader.h"
#include "appearance/SchemePalette.h"
#include "appearance/WidgetColours.h"
#include "links/TableHost.h"
#include "platform/AppDirectory.h"
#include "platform/PictureLoader.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>

void frmAlarmClock::subSetRowDetailsBackColor(int index) { m_rows.paintRest(index); }

void frmAlarmClock::subSetMainForeAndBackGroundColors()
{
    const int scheme = m_state.intColorPick;
    if (scheme == 2)
        subGloballyLoadfrmAlarmClockColours(m_db, m_state.customColours);
    const auto palette = schemePalette(scheme, m_state.customColours);
    if (!palette)
        return;

    const qint32 text = palette->text;
    setTextColour(lblRows, text);
    setTextColour(lblSetButton, text);
    setTextColour(this, palette->windowText);
    for (QWidget *w : {static_cast<QWidget *>(chkSoundOnOff), static_cast<QWidget *>(chkShow),
                       static_cast<QWidget *>(chkTimeRow), static_cast<QWidget *>(chkMinimizeToTray),
                       static_cast<QWidget *>(lblACDate), static_cast<QWidget *>(lblACTime),
                       static_cast<QWidget *>(lblEventDesc), static_cast<QWidget *>(txtCurrentDateTime)})
        setTextColour(w, text);
    // Labels of this build's own (not in the classic layout) follow the
    // scheme's text colour, so they never inherit the window's white.
    for (QLabel *label : lblJump)
        setTextColour(label, text);
    if (auto *timesLabel = findChild<QLabel *>(QStringLiteral("lblSoundOffTimes")))
        setTextColour(timesLabel, text);
    for (int i = 0; i < kAlarmRows; ++i) {
        setTextColour(lblRowNumber[i], palette->rowNumberText);
        setTextColour(txtURL[i], text);
        setTextColour(lbl24[i], palette->rowNumberText);
        setTextColour(txtACDate[i], text);
        setTextColour(txtACTime[i], text);
        setTextColour(lblCountDownHours[i], text);
        setTextColour(txtACDetails[i], palette->detailsText);
        setTextColour(lblUrlToolTip[i], text);
    }

    // The colours replace the window's brush; a picture that fails to load
    // below must leave the previous one, so keep it.
    const QBrush previousPicture = QWidget::palette().brush(QPalette::Window);
    const qint32 back = palette->background;
    setBackColour(picBottom, back);
    for (QWidget *w : {static_cast<QWidget *>(chkSoundOnOff), static_cast<QWidget *>(chkShow),
                       static_cast<QWidget *>(chkTimeRow), static_cast<QWidget *>(chkMinimizeToTray),
                       static_cast<QWidget *>(lblRows), static_cast<QWidget *>(lblSetButton)})
        setBackColour(w, back);
    setBackColour(this, back);
    for (QWidget *w : {static_cast<QWidget *>(chkSoundOnOff), static_cast<QWidget *>(chkShow),
                       static_cast<QWidget *>(chkTimeRow), static_cast<QWidget *>(chkMinimizeToTray),
                       static_cast<QWidget *>(lblACDate), static_cast<QWidget *>(lblACTime),
                       static_cast<QWidget *>(lblEventDesc), static_cast<QWidget *>(txtCurrentDateTime)})
        setBackColour(w, back);
    for (int i = 0; i < kAlarmRows; ++i) {
        for (QWidget *w : {static_cast<QWidget *>(lblRowNumber[i]), static_cast<QWidget *>(txtURL[i]),
                           static_cast<QWidget *>(lbl24[i]), static_cast<QWidget *>(txtACDate[i]),
                           static_cast<QWidget *>(txtACTime[i]), static_cast<QWidget *>(lblCountDownHours[i]),
                           static_cast<QWidget *>(txtACDetails[i])})
            setBackColour(w, back);
    }

    // A missing or broken picture leaves the colours and the old picture.
    const QString picture = m_platform.appDir.path() + QLatin1Char('/') + QLatin1String(schemePictureName(scheme));
    if (!m_platform.pictures.setBackground(this, picture) && previousPicture.style() == Qt::TexturePattern) {
        QPalette withPicture = QWidget::palette();
        withPicture.setBrush(QPalette::Window, previousPicture);
        setPalette(withPicture);
    }
    if (QWidget *main = m_host.mainPictureTarget())
        m_platform.pictures.setBackground(main, picture);
}
