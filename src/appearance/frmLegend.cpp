#include "appearance/frmLegend.h"

#include "appearance/WidgetColours.h"
#include "links/AlarmState.h"
#include "links/SecondaryHost.h"

#include <QCloseEvent>
#include <QLabel>
#include <QVBoxLayout>

namespace {

struct LegendColours {
    qint32 window, titleText, titleBack, stateText;
    std::array<qint32, 5> stateBack; // hours away, 8 minutes, 52 minutes, sounded, 24-hour passed
};

std::optional<LegendColours> legendColours(int scheme, const CustomColours &c)
{
    switch (scheme) {
    case 0:
        return LegendColours{0xFFFFFF, 0x000000, 0xFFFFFF, 0x000000, {0xFFFFFF, 0x00FF00, 0x00FFFF, 0x0000FF, 0x80FF80}};
    case 1:
        // Black text on the green and yellow state lines, as intended.
        return LegendColours{0x004000, 0x00FF00, 0x004000, 0x000000, {0x008000, 0x00FF00, 0x00C000, 0x00FFFF, 0x80FF80}};
    case 2:
        return LegendColours{c.slot(2), c.slot(1), c.slot(2), c.slot(8),
                             {c.slot(3), c.slot(4), c.slot(5), c.slot(6), c.slot(7)}};
    default:
        return std::nullopt;
    }
}

} // namespace

frmLegend::frmLegend(const AlarmState &state, SecondaryHost &host, QWidget *parent)
    : QWidget(parent), m_state(state), m_host(host)
{
    setObjectName(QStringLiteral("frmLegend"));
    setWindowTitle(QStringLiteral("Legend"));
    setFont(QFont(QStringLiteral("Arial"), 10));
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(12, 12, 12, 12);
    layout->setSpacing(6);

    auto line = [&](const QString &name, const QString &caption) {
        auto *label = new QLabel(caption, this);
        label->setObjectName(name);
        label->setMargin(6);
        label->setAutoFillBackground(true);
        layout->addWidget(label);
        return label;
    };
    lblTitle = line(QStringLiteral("lblTitle"), QStringLiteral("FORM TITLES"));
    QFont bold = lblTitle->font();
    bold.setBold(true);
    lblTitle->setFont(bold);
    const QString captions[6] = {QStringLiteral("Alarm Clock will not trip for hours."),
                                 QStringLiteral("Under 8 minutes till Alarm Clock trips."),
                                 QStringLiteral("Under 52 minutes till Alarm Clock trips."),
                                 QStringLiteral("The Alarm has sounded for this event."),
                                 QStringLiteral("24 Hour Alarm Clock has just passed."),
                                 QStringLiteral("d = days, h = hours, m = mins, s = seconds")};
    for (int i = 0; i < 6; ++i)
        lblColours[size_t(i)] = line(QStringLiteral("lblColours_%1").arg(i), captions[i]);
    setMinimumWidth(340);
    Form_Activate();
}

void frmLegend::Form_Activate()
{
    const auto colours = legendColours(m_state.intColorPick, m_state.customColours);
    if (!colours)
        return;
    setBackColour(this, colours->window);
    setTextColour(lblTitle, colours->titleText);
    setBackColour(lblTitle, colours->titleBack);
    for (int i = 0; i < 5; ++i)
        setTextColour(lblColours[size_t(i)], colours->stateText);
    setTextColour(lblColours[5], textColour(lblTitle));
    for (int i = 0; i < 5; ++i)
        setBackColour(lblColours[size_t(i)], colours->stateBack[size_t(i)]);
    setBackColour(lblColours[5], backColour(lblTitle));
}

bool frmLegend::event(QEvent *event)
{
    if (event->type() == QEvent::WindowActivate)
        Form_Activate();
    return QWidget::event(event);
}

void frmLegend::closeEvent(QCloseEvent *event)
{
    event->accept();
    m_host.closeSequence();
}
