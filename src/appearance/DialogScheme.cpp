#include "appearance/DialogScheme.h"

#include "appearance/SchemePalette.h"
#include "appearance/WidgetColours.h"

#include <QLabel>

void applySchemeToDialog(QWidget *dialog, int scheme, const CustomColours &custom)
{
    const auto palette = schemePalette(scheme, custom);
    if (!palette)
        return;
    setBackColour(dialog, palette->background);
    for (QLabel *label : dialog->findChildren<QLabel *>())
        setTextColour(label, palette->text);
}
