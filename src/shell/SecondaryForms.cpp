#include "shell/SecondaryForms.h"

#include "appearance/frmCustomColors.h"
#include "appearance/frmLegend.h"
#include "editors/frmEditURL.h"
#include "editors/frmEditWAVEFileNamePath.h"
#include "info/frmAbout.h"
#include "info/frmTables.h"
#include "links/CustomColorsHost.h"

SecondaryForms::SecondaryForms(const Platform &platform, Database &db, ProgramSettings &settings, AlarmState &state,
                               CustomColorsHost &host, RowEdits &table)
    : m_platform(platform), m_db(db), m_settings(settings), m_state(state), m_host(host), m_table(table)
{
}

SecondaryForms::~SecondaryForms()
{
    for (const QPointer<QWidget> &form : m_forms)
        delete form.data();
}

QWidget *SecondaryForms::create(SecondaryForm form)
{
    switch (form) {
    case SecondaryForm::Legend:
        return new frmLegend(m_state, m_host);
    case SecondaryForm::About:
        return new frmAbout(m_platform, m_settings, m_host);
    case SecondaryForm::EditURL:
        return new frmEditURL(m_table, m_state, m_host);
    case SecondaryForm::EditWAVEFileNamePath:
        return new frmEditWAVEFileNamePath(m_platform, m_table, m_state, m_host);
    case SecondaryForm::CustomColors:
        return new frmCustomColors(m_platform, m_db, m_state, m_host);
    case SecondaryForm::Tables:
        return new frmTables;
    }
    return nullptr;
}

QWidget *SecondaryForms::show(SecondaryForm form)
{
    QPointer<QWidget> &slot = m_forms[size_t(form)];
    if (!slot) {
        slot = create(form);
        slot->setAttribute(Qt::WA_DeleteOnClose);
        m_loadOrder.removeAll(nullptr);
        m_loadOrder.append(slot);
    }
    slot->show();
    slot->raise();
    slot->activateWindow();
    return slot;
}

void SecondaryForms::unloadAll()
{
    for (SecondaryForm form : {SecondaryForm::Legend, SecondaryForm::About, SecondaryForm::EditURL,
                               SecondaryForm::EditWAVEFileNamePath, SecondaryForm::CustomColors})
        if (QWidget *w = m_forms[size_t(form)])
            w->close();
}

void SecondaryForms::closeAll()
{
    const QList<QPointer<QWidget>> order = m_loadOrder;
    for (auto it = order.crbegin(); it != order.crend(); ++it)
        if (*it)
            (*it)->close();
}
