#include "table/RowEntry.h"

#include "rules/DateText.h"
#include "rules/TimeText.h"
#include "rules/ValueConversions.h"
#include "table/AlarmRows.h"

#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>

RowEntry::RowEntry(RowControls &rows, AlarmState &state, AlarmRows &alarmRows)
    : m_rows(rows), m_state(state), m_alarmRows(alarmRows)
{
}

void RowEntry::commitDate(int index)
{
    QLineEdit *box = m_rows.txtACDate[size_t(index)];
    const std::optional<QDate> date = parseDate(textValue(box->text()));
    box->setText(date ? formatDate(*date) : QString());
    m_state.strAlarmDates[size_t(index)] = box->text();
    m_rows.lblCountDownHours[size_t(index)]->setText(QString());
    derive24Mark(index);
    m_state.bEvaluateNow = true;
    m_alarmRows.paintRest(index);
}

void RowEntry::commitTime(int index)
{
    QString t = textValue(m_rows.txtACTime[size_t(index)]->text());
    if (t.size() == 5) {
        t = normaliseTime(t);
        m_rows.lblCountDownHours[size_t(index)]->setText(QString());
    } else {
        t.clear();
    }
    m_rows.txtACTime[size_t(index)]->setText(t);
    m_state.strAlarmTimes[size_t(index)] = t;
    derive24Mark(index);
    m_state.bEvaluateNow = true;
    m_alarmRows.paintRest(index);
}

void RowEntry::derive24Mark(int index)
{
    if (parseDate(textValue(m_rows.txtACDate[size_t(index)]->text()))) {
        m_rows.lbl24[size_t(index)]->setVisible(false);
        return;
    }
    const QString time = textValue(m_rows.txtACTime[size_t(index)]->text());
    if (time.size() == 5 && time.contains(u':'))
        m_rows.lbl24[size_t(index)]->setVisible(true);
}

bool RowEntry::filterTyping(int index, QEvent *event)
{
    QLineEdit *box = m_rows.txtACTime[size_t(index)];
    if (event->type() == QEvent::KeyPress) {
        auto *key = static_cast<QKeyEvent *>(event);
        if (key->key() == Qt::Key_Tab || key->key() == Qt::Key_Backtab || key->key() == Qt::Key_Delete
            || key->text().isEmpty()
            || (key->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)))
            return false;
        const QChar original = key->text().at(0);
        const std::optional<QChar> typed = filterTimeKey(original);
        if (typed && *typed == original)
            return false;
        if (typed)
            box->insert(QString(*typed));
        return true;
    }
    if (event->type() == QEvent::InputMethod) {
        // Composed text (dead keys, input methods) is typing too: each
        // character goes through the same filter.
        QString passed;
        for (QChar c : static_cast<QInputMethodEvent *>(event)->commitString())
            if (const std::optional<QChar> kept = filterTimeKey(c))
                passed += *kept;
        if (!passed.isEmpty())
            box->insert(passed);
        return true;
    }
    return false;
}
