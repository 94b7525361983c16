#include "table/AlarmRows.h"

#include "appearance/SchemePalette.h"
#include "appearance/WidgetColours.h"
#include "data/Database.h"
#include "rules/DateText.h"
#include "rules/TimeText.h"
#include "rules/ValueConversions.h"

#include <QLabel>
#include <QLineEdit>

AlarmRows::AlarmRows(RowControls &rows, AlarmState &state, const QWidget &window)
    : m_rows(rows), m_state(state), m_window(window)
{
}

QString AlarmRows::urlMarkerTip() { return QStringLiteral("Reveals the URL description."); }

void AlarmRows::markUrl(int row, const QString &address, bool stored)
{
    QLabel *marker = m_rows.lblUrlToolTip[size_t(row)];
    marker->setText(address.isEmpty() ? QStringLiteral("?") : stored ? QStringLiteral("*") : QStringLiteral("!"));
    marker->setToolTip(address.isEmpty() ? urlMarkerTip() : address);
    marker->setAccessibleDescription(marker->toolTip());
}

void AlarmRows::paintRest(int row)
{
    if (const auto palette = schemePalette(m_state.intColorPick, m_state.customColours))
        setBackColour(m_rows.txtACDetails[size_t(row)], palette->background);
}

void AlarmRows::load(Database &db)
{
    RowControls &r = m_rows;
    Recordset rs = db.MyDB().openRecordset(QStringLiteral("SELECT * FROM tblalarmclock ORDER BY lngalarmclockid;"));
    for (int i = 0; i < kAlarmRows; ++i) {
        r.lblCountDownHours[i]->setText(QString());
        paintRest(i);
        if (rs.eof()) {
            // A short table keeps this row's address, marker and sound.
            r.txtACDate[i]->setText(QString());
            r.txtACTime[i]->setText(QString());
            r.txtACDetails[i]->setText(QString());
            r.lbl24[i]->setVisible(false);
        } else {
            const QString dateText = textValue(rs.field(QStringLiteral("dtalarmclockmmmddyyyy")));
            const QString url = textValue(rs.field(QStringLiteral("strURL")));
            r.txtURL[i]->setText(url);
            markUrl(i, url, true);
            r.txtWAVEFileNamePath[i]->setText(textValue(rs.field(QStringLiteral("strWAVEFileNamePath"))));
            r.txtACDate[i]->setText(formatDateText(dateText));
            // A stored time that is no time loads empty: it could never ring.
            const QString timeText = timeOrEmpty(textValue(rs.field(QStringLiteral("dtalarmclockhhnn"))));
            r.txtACTime[i]->setText(timeText);
            // The daily mark is derived, never read from the record.
            if (parseDate(dateText))
                r.lbl24[i]->setVisible(false);
            else if (!timeText.isEmpty())
                r.lbl24[i]->setVisible(true);
            r.txtACDetails[i]->setText(textValue(rs.field(QStringLiteral("stralarmclock"))));
            rs.moveNext();
        }
        m_state.strAlarmDates[size_t(i)] = r.txtACDate[i]->text();
        m_state.strAlarmTimes[size_t(i)] = r.txtACTime[i]->text();
    }
    rs.close();
}

void AlarmRows::save(Database &db)
{
    const RowControls &r = m_rows;
    DbHandle handle = db.MyDB();
    // One transaction: a failed save leaves the rows that were stored.
    handle.beginTrans();
    try {
        handle.execute(QStringLiteral("delete * from tblalarmclock;"));
        Recordset rs = handle.openTable(QStringLiteral("tblalarmclock"));
        for (int i = 0; i < kAlarmRows; ++i) {
            r.lblCountDownHours[i]->setText(QString());
            rs.addNew();
            if (parseDate(r.txtACDate[i]->text()))
                rs.setField(QStringLiteral("dtalarmclockmmmddyyyy"), textValue(r.txtACDate[i]->text()));
            if (!r.txtACTime[i]->text().isEmpty())
                rs.setField(QStringLiteral("dtalarmclockhhnn"), r.txtACTime[i]->text());
            if (!r.txtACDetails[i]->text().isEmpty())
                rs.setField(QStringLiteral("stralarmclock"), r.txtACDetails[i]->text());
            rs.setField(QStringLiteral("booRepeat"), r.lbl24[i]->isVisibleTo(&m_window));
            rs.setField(QStringLiteral("strURL"), textValue(r.txtURL[i]->text()));
            rs.setField(QStringLiteral("strWAVEFileNamePath"), textValue(r.txtWAVEFileNamePath[i]->text()));
            rs.update();
        }
        rs.close();
        handle.commitTrans();
    } catch (...) {
        handle.rollback();
        throw;
    }
}

void AlarmRows::empty(int i)
{
    RowControls &r = m_rows;
    r.txtWAVEFileNamePath[i]->setText(QString());
    markUrl(i, QString(), false);
    r.txtURL[i]->setText(QString());
    r.lbl24[i]->setVisible(false);
    r.txtACDate[i]->setText(QString());
    r.txtACTime[i]->setText(QString());
    m_state.strAlarmDates[size_t(i)].clear();
    m_state.strAlarmTimes[size_t(i)].clear();
    r.lblCountDownHours[i]->setText(QString());
    r.txtACDetails[i]->setText(QString());
    paintRest(i);
}
