#pragma once

#include "platform/Platform.h"

#include <QPointer>
#include <QWidget>
#include <array>

class CustomColorsHost;
class Database;
class ProgramSettings;
class RowEdits;
struct AlarmState;

// The windows the main window opens beside the table.
enum class SecondaryForm { Legend, About, EditURL, EditWAVEFileNamePath, CustomColors, Tables };

// Loads, shows and unloads the windows that open beside the table. Each is
// a modeless top-level window, created when first shown and destroyed when
// closed, so it loads afresh every time.
class SecondaryForms {
public:
    // `host` is the main window; `table` takes what the row editors apply.
    SecondaryForms(const Platform &platform, Database &db, ProgramSettings &settings, AlarmState &state,
                   CustomColorsHost &host, RowEdits &table);
    ~SecondaryForms();
    SecondaryForms(const SecondaryForms &) = delete;
    SecondaryForms &operator=(const SecondaryForms &) = delete;

    QWidget *show(SecondaryForm form);
    // The open window, or null.
    QWidget *form(SecondaryForm form) const { return m_forms[size_t(form)]; }
    // Legend, About, the two editors and Custom Colors, in that order. The
    // table-design window is not one of them.
    void unloadAll();
    // Every open window, the last loaded first.
    void closeAll();

private:
    QWidget *create(SecondaryForm form);

    const Platform m_platform;
    Database &m_db;
    ProgramSettings &m_settings;
    AlarmState &m_state;
    CustomColorsHost &m_host;
    RowEdits &m_table;
    std::array<QPointer<QWidget>, 6> m_forms;
    QList<QPointer<QWidget>> m_loadOrder;
};
