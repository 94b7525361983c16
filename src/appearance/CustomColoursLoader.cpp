#include "appearance/CustomColoursLoader.h"

#include "appearance/ColourText.h"
#include "data/Database.h"
#include "platform/MessageBox.h"
#include "rules/AppError.h"
#include "rules/CustomColours.h"
#include "rules/ValueConversions.h"

void subGloballyLoadfrmAlarmClockColours(Database &db, CustomColours &colours)
{
    try {
        Recordset rs = db.MyDB().openTable(QStringLiteral("tblprogramsetting"));
        if (!rs.eof()) {
            rs.moveFirst();
            for (int n = 1; n <= 10; ++n) {
                const QString field = QStringLiteral("strCustomColours%1").arg(n, 2, 10, QLatin1Char('0'));
                colours.setSlot(n, colourFromText(textValue(rs.field(field))));
            }
        }
        rs.close();
    } catch (const AppError &e) {
        showErrorBox(db.messages(), QStringLiteral("subGloballyLoadfrmAlarmClockColours"), e);
    }
}
